/// The keys of the "media" block, in the order of the file.
#pragma once

#include <array>

#include <platen/plotcfg.h>
#include "pia/node_keys.h"

template <>
struct NodeKeys<CustomPaperSize> {
    using Node = CustomPaperSize;
    static constexpr std::array all{
        nodeKey<&Node::globalName>(L"global_name"),
        nodeKey<&Node::localName>(L"local_name"),
        nodeKey<&Node::units>(L"units"),
        nodeKey<&Node::width>(L"width"),
        nodeKey<&Node::height>(L"height"),
        nodeKey<&Node::left>(L"left"),
        nodeKey<&Node::bottom>(L"bottom"),
        nodeKey<&Node::right>(L"right"),
        nodeKey<&Node::top>(L"top"),
    };
};

template <>
struct NodeCodec<CMediaNode::CustomPapersNode>
    : NodeListCodec<CMediaNode::CustomPapersNode, CustomPaperSize,
                    &CMediaNode::CustomPapersNode::papers> {};

template <>
struct NodeKeys<CMediaNode::CDestinationNode> {
    using Node = CMediaNode::CDestinationNode;
    static constexpr std::array all{
        nodeKey<&Node::name>(L"name"),
        nodeKey<&Node::collatingType>(L"collating_type"),
        nodeKey<&Node::collatingName>(L"collating_name"),
    };
};

template <>
struct NodeKeys<CMediaNode::CSizeNode::CMediaDescriptionNode::CMediaBoundsNode> {
    using Node = CMediaNode::CSizeNode::CMediaDescriptionNode::CMediaBoundsNode;
    static constexpr std::array all{nodeKey<&Node::urx>(L"urx"), nodeKey<&Node::ury>(L"ury")};
};

template <>
struct NodeKeys<CMediaNode::CSizeNode::CMediaDescriptionNode> {
    using Node = CMediaNode::CSizeNode::CMediaDescriptionNode;
    static constexpr std::array all{
        nodeKey<&Node::printableBoundsLlx>(L"printable_bounds_llx"),
        nodeKey<&Node::printableBoundsLly>(L"printable_bounds_lly"),
        nodeKey<&Node::printableBoundsUrx>(L"printable_bounds_urx"),
        nodeKey<&Node::printableBoundsUry>(L"printable_bounds_ury"),
        nodeKey<&Node::printableArea>(L"printable_area"),
        nodeKey<&Node::dimensional>(L"dimensional"),
        nodeKey<&Node::mediaBounds>(L"media_bounds"),
    };
};

template <>
struct NodeKeys<CMediaNode::CSizeNode> {
    using Node = CMediaNode::CSizeNode;
    static constexpr auto optional = KeyPresence::Optional;
    static constexpr std::array all{
        nodeKey<&Node::name>(L"name"),
        nodeKey<&Node::group>(L"group"),
        nodeKey<&Node::landscapeMode>(L"landscape_mode"),
        nodeKey<&Node::longplotReduction>(
            L"longplot_reduction",
            {.presence = optional,
             .written = [](const Node& n) { return n.longplotReduction != -1.0; }}),
        nodeKey<&Node::dmScale>(
            L"dm_scale",
            {.presence = optional, .written = [](const Node& n) { return n.dmScale != 100; }}),
        nodeKey<&Node::mediaDescription>(L"media_description"),
    };
};

template <>
struct NodeKeys<CMediaNode> {
    using Node = CMediaNode;
    static constexpr auto optional = KeyPresence::Optional;
    static constexpr std::array all{
        nodeKey<&Node::selectionMethod>(L"selection_method"),
        nodeKey<&Node::type>(L"type", {.alias = PiaKey(L"type_name")}),
        nodeKey<&Node::dmOrientation>(L"dm_orientation"),
        nodeKey<&Node::actualPrintableBoundsLlx>(L"actual_printable_bounds_llx"),
        nodeKey<&Node::actualPrintableBoundsLly>(L"actual_printable_bounds_lly"),
        nodeKey<&Node::actualPrintableBoundsUrx>(L"actual_printable_bounds_urx"),
        nodeKey<&Node::actualPrintableBoundsUry>(L"actual_printable_bounds_ury"),
        nodeKey<&Node::numberOfCopies>(L"number_of_copies"),
        nodeKey<&Node::size>(L"size"),
        nodeKey<&Node::destination>(L"destination", {.presence = optional}),
        nodeKey<&Node::customPapers>(L"custom_papers", {.presence = optional}),
    };
};

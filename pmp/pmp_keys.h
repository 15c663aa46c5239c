/// The keys of the PMP blocks, in the order of the file.
#pragma once

#include <array>

#include <platen/pmp.h>
#include "pia/node_keys.h"
#include "pmp/meta_keys.h"

template <>
struct NodeKeys<PmpSizeNode::PaperSize> {
    using Node = PmpSizeNode::PaperSize;
    static constexpr std::array all{
        nodeKey<&Node::capsType>(L"caps_type"),
        nodeKey<&Node::name>(L"name"),
        nodeKey<&Node::localizedName>(L"localized_name"),
        nodeKey<&Node::mediaDescriptionName>(L"media_description_name"),
        nodeKey<&Node::mediaGroup>(L"media_group"),
        nodeKey<&Node::landscapeMode>(L"landscape_mode"),
    };
};

template <>
struct NodeCodec<PmpSizeNode>
    : NodeListCodec<PmpSizeNode, PmpSizeNode::PaperSize, &PmpSizeNode::papers> {};

template <>
struct NodeKeys<PmpDescriptionNode::PaperSizeDescription> {
    using Node = PmpDescriptionNode::PaperSizeDescription;
    static constexpr std::array all{
        nodeKey<&Node::capsType>(L"caps_type"),
        nodeKey<&Node::name>(L"name"),
        nodeKey<&Node::mediaBoundsUrx>(L"media_bounds_urx"),
        nodeKey<&Node::mediaBoundsUry>(L"media_bounds_ury"),
        nodeKey<&Node::printableBoundsLlx>(L"printable_bounds_llx"),
        nodeKey<&Node::printableBoundsLly>(L"printable_bounds_lly"),
        nodeKey<&Node::printableBoundsUrx>(L"printable_bounds_urx"),
        nodeKey<&Node::printableBoundsUry>(L"printable_bounds_ury"),
        nodeKey<&Node::printableArea>(L"printable_area"),
        nodeKey<&Node::dimensional>(L"dimensional"),
    };
};

template <>
struct NodeCodec<PmpDescriptionNode>
    : NodeListCodec<PmpDescriptionNode, PmpDescriptionNode::PaperSizeDescription,
                    &PmpDescriptionNode::papers> {};

template <>
struct NodeKeys<ModNode::MediaNode> {
    using Node = ModNode::MediaNode;
    static constexpr auto optional = KeyPresence::Optional;
    static constexpr std::array all{
        nodeKey<&Node::abilities>(L"abilities"),
        nodeKey<&Node::capsState>(L"caps_state"),
        nodeKey<&Node::uiOwner>(L"ui_owner"),
        nodeKey<&Node::sizeMaxX>(L"size_max_x"),
        nodeKey<&Node::sizeMaxY>(L"size_max_y"),
        nodeKey<&Node::defaultSize>(
            L"default_size", {.presence = optional,
                              .written = [](const Node& n) { return !n.defaultSize.empty(); }}),
        nodeKey<&Node::size>(L"size", {.presence = optional}),
        nodeKey<&Node::description>(L"description", {.presence = optional}),
    };
};

template <>
struct NodeKeys<ModNode> {
    static constexpr std::array all{nodeKey<&ModNode::media>(L"media")};
};

template <>
struct NodeKeys<UdmNode::CalibrationNode> {
    using Node = UdmNode::CalibrationNode;
    static constexpr std::array all{nodeKey<&Node::x>(L"_x"), nodeKey<&Node::y>(L"_y")};
};

template <>
struct NodeKeys<UdmNode::MediaNode> {
    using Node = UdmNode::MediaNode;
    static constexpr std::array all{
        nodeKey<&Node::maxRollHeight>(L"max_roll_height", {.presence = KeyPresence::Optional}),
        nodeKey<&Node::size>(L"size"),
        nodeKey<&Node::description>(L"description"),
    };
};

template <>
struct NodeKeys<UdmNode> {
    static constexpr std::array all{
        nodeKey<&UdmNode::calibration>(L"calibration"),
        nodeKey<&UdmNode::media>(L"media", {.presence = KeyPresence::Optional}),
    };
};

template <>
struct NodeKeys<HiddenNode::MediaNode> {
    using Node = HiddenNode::MediaNode;
    static constexpr auto optional = KeyPresence::Optional;
    static constexpr std::array all{
        nodeKey<&Node::defaultSize>(
            L"default_size", {.presence = optional,
                              .written = [](const Node& n) { return !n.defaultSize.empty(); }}),
        nodeKey<&Node::size>(L"size", {.presence = optional}),
    };
};

template <>
struct NodeKeys<HiddenNode> {
    static constexpr std::array all{nodeKey<&HiddenNode::media>(L"media")};
};

template <>
struct NodeKeys<PlotModelParam> {
    using Node = PlotModelParam;
    static constexpr std::array all{
        baseKey<CMetaNode, Node>(L"meta"),
        nodeKey<&Node::mod>(L"mod"),
        nodeKey<&Node::udm>(L"udm"),
        nodeKey<&Node::hidden>(L"hidden", {.presence = KeyPresence::Optional}),
    };
};

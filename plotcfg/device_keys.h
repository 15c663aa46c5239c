/// The keys of the "io" and "res_color_mem" blocks, in the order of the file.
#pragma once

#include <array>

#include <platen/plotcfg.h>
#include "pia/node_keys.h"

template <>
struct NodeKeys<CIoNode> {
    using Node = CIoNode;
    static constexpr std::array all{
        nodeKey<&Node::type>(L"type"),
        nodeKey<&Node::pathname>(L"pathname"),
        nodeKey<&Node::allSysValid>(L"allsysvalid"),
        nodeKey<&Node::plotToFile>(L"plot_to_file"),
    };
};

template <>
struct NodeKeys<CResColorMemNode::CResolutionNode> {
    using Node = CResColorMemNode::CResolutionNode;
    static constexpr KeyOptions<Node> optional{.presence = KeyPresence::Optional, .precision = 1};
    static constexpr KeyOptions<Node> required{.precision = 1};
    static constexpr std::array all{
        nodeKey<&Node::name>(L"name"),
        nodeKey<&Node::physResolutionX>(L"phys_resolution_x", optional),
        nodeKey<&Node::physResolutionY>(L"phys_resolution_y", optional),
        nodeKey<&Node::addrResolutionX>(L"addr_resolution_x", required),
        nodeKey<&Node::addrResolutionY>(L"addr_resolution_y", required),
        nodeKey<&Node::effectiveResolutionX>(L"effective_resolution_x", required),
        nodeKey<&Node::effectiveResolutionY>(L"effective_resolution_y", required),
    };
};

/// Most optional numbers are left out when they are 0, the two maxima when they are -1: a maximum
/// of 0 says something, a method of 0 does not.
template <>
struct NodeKeys<CResColorMemNode> {
    using Node = CResColorMemNode;
    static constexpr auto optional = KeyPresence::Optional;
    static constexpr std::array all{
        nodeKey<&Node::name>(L"name"),
        nodeKey<&Node::numColors>(L"num_colors"),
        nodeKey<&Node::colorDepth>(L"color_depth"),
        nodeKey<&Node::numUnditheredColors>(L"num_undithered_colors"),
        nodeKey<&Node::colorSystem>(L"color_system"),
        nodeKey<&Node::dmColor>(L"dm_color"),
        nodeKey<&Node::icmMethod>(
            L"icm_method",
            {.presence = optional, .written = [](const Node& n) { return n.icmMethod != 0; }}),
        nodeKey<&Node::icmIntent>(
            L"icm_intent",
            {.presence = optional, .written = [](const Node& n) { return n.icmIntent != 0; }}),
        nodeKey<&Node::ismMax>(
            L"ism_max",
            {.presence = optional, .written = [](const Node& n) { return n.ismMax != -1; }}),
        nodeKey<&Node::oleMax>(
            L"ole_max",
            {.presence = optional, .written = [](const Node& n) { return n.oleMax != -1; }}),
        nodeKey<&Node::hardSoft>(
            L"hard_soft",
            {.presence = optional, .written = [](const Node& n) { return n.hardSoft != 0; }}),
        nodeKey<&Node::preference>(
            L"preference",
            {.presence = optional, .written = [](const Node& n) { return n.preference != 0; }}),
        nodeKey<&Node::linesOverwrite>(L"lines_overwrite", {.presence = optional}),
        nodeKey<&Node::colorMono>(L"color_mono", {.presence = optional}),
        nodeKey<&Node::resolution>(L"resolution"),
    };
};

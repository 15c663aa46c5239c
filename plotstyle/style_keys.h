/// The keys of one plot style.
#pragma once

#include <array>
#include <tuple>

#include <platen/plotstyle.h>
#include "pia/node_keys.h"

/// In the order of the file. The mode colour is the only optional key: a table whose styles all
/// keep the object's colour is written without it.
template <>
struct NodeKeys<CPlotStyle> {
    using Node = CPlotStyle;

    static void takeColor(Node& style) { style.modeColor_ = style.color_; }

    static constexpr std::array all{
        nodeKey<&Node::name_>(L"name"),
        nodeKey<&Node::localizedName_>(L"localized_name"),
        nodeKey<&Node::description_>(L"description"),
        nodeKey<&Node::color_>(L"color"),
        nodeKey<&Node::modeColor_>(
            L"mode_color", {.presence = KeyPresence::Optional, .whenAbsent = &NodeKeys::takeColor}),
        nodeKey<&Node::colorPolicy_>(L"color_policy"),
        nodeKey<&Node::physicalPen_>(L"physical_pen_number"),
        nodeKey<&Node::virtualPen_>(L"virtual_pen_number"),
        nodeKey<&Node::screen_>(L"screen"),
        nodeKey<&Node::linePatternSize_>(L"linepattern_size"),
        nodeKey<&Node::lineType_>(L"linetype"),
        nodeKey<&Node::adaptiveLineType_>(L"adaptive_linetype"),
        nodeKey<&Node::lineWeight_>(L"lineweight"),
        nodeKey<&Node::fillStyle_>(L"fill_style"),
        nodeKey<&Node::endStyle_>(L"end_style"),
        nodeKey<&Node::joinStyle_>(L"join_style"),
    };

    /// The members in the order of the binary stream.
    static constexpr std::tuple streamed{
        &Node::name_,       &Node::localizedName_,   &Node::description_, &Node::color_,
        &Node::modeColor_,  &Node::colorPolicy_,     &Node::physicalPen_, &Node::virtualPen_,
        &Node::screen_,     &Node::linePatternSize_, &Node::lineType_,    &Node::adaptiveLineType_,
        &Node::lineWeight_, &Node::fillStyle_,       &Node::endStyle_,    &Node::joinStyle_};
};

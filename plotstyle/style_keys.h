/// The keys of one plot style.
#pragma once

#include <array>

#include "pia/node_keys.h"
#include "plotstyle.h"

/// In the order of the file, which is the order of the binary stream too. The mode colour is the
/// only optional key: a table whose styles all keep the object's colour is written without it.
struct PlotStyleKeys {
    static void takeColor(CPlotStyle& style) { style.modeColor_ = style.color_; }

    static constexpr std::array<NodeKey<CPlotStyle>, 16> all{{
        {.name = L"name", .member = &CPlotStyle::name_},
        {.name = L"localized_name", .member = &CPlotStyle::localizedName_},
        {.name = L"description", .member = &CPlotStyle::description_},
        {.name = L"color", .member = &CPlotStyle::color_},
        {.name = L"mode_color",
         .member = &CPlotStyle::modeColor_,
         .presence = KeyPresence::Optional,
         .whenAbsent = &takeColor},
        {.name = L"color_policy", .member = &CPlotStyle::colorPolicy_},
        {.name = L"physical_pen_number", .member = &CPlotStyle::physicalPen_},
        {.name = L"virtual_pen_number", .member = &CPlotStyle::virtualPen_},
        {.name = L"screen", .member = &CPlotStyle::screen_},
        {.name = L"linepattern_size", .member = &CPlotStyle::linePatternSize_},
        {.name = L"linetype", .member = &CPlotStyle::lineType_},
        {.name = L"adaptive_linetype", .member = &CPlotStyle::adaptiveLineType_},
        {.name = L"lineweight", .member = &CPlotStyle::lineWeight_},
        {.name = L"fill_style", .member = &CPlotStyle::fillStyle_},
        {.name = L"end_style", .member = &CPlotStyle::endStyle_},
        {.name = L"join_style", .member = &CPlotStyle::joinStyle_},
    }};
};

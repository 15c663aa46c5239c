/// What makes two styles draw alike.
#pragma once

#include <tuple>

#include <platen/plotstyle.h>

namespace plot_style {

/// Every number of a style. Doubles compare exactly: -0.0 equals 0.0, and a NaN nothing.
inline auto settingsOf(const CPlotStyle& style) {
    return std::tuple(style.color(), style.mode_color(), style.color_policy(), style.pen(),
                      style.virtualPen(), style.screen(), style.linepattern_size(),
                      style.lineType(), style.isAdaptiveLinetype(), style.lineWeight(),
                      style.fillStyle(), style.endStyle(), style.joinStyle());
}

}  // namespace plot_style

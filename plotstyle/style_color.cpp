#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include <platen/plotstyle.h>
#include "plotstyle/palette.h"

namespace {

/// The object's own colour, as a COLORREF and as a packed colour.
constexpr std::int32_t objectColor = -1;

constexpr std::uint32_t colorBits = 0x00FFFFFF;
constexpr std::uint32_t byIndex = 0xC3000000;
constexpr std::uint32_t trueColor = 0xC2000000;

constexpr std::uint32_t byteAt(std::uint32_t color, unsigned shift) {
    return (color >> shift) & 0xFFU;
}

/// Turns 0xRRGGBB into a COLORREF and back, without the top byte.
constexpr std::uint32_t exchangeRedAndBlue(std::uint32_t color) {
    return (byteAt(color, 0) << 16U) | (color & 0xFF00U) | byteAt(color, 16);
}

constexpr std::int32_t squaredDifference(std::uint32_t left, std::uint32_t right, unsigned shift) {
    const auto difference = static_cast<std::int32_t>(byteAt(left, shift)) -
                            static_cast<std::int32_t>(byteAt(right, shift));
    return difference * difference;
}

/// The palette entry nearest to `color`, both 0xRRGGBB; of equally near ones the one with the
/// lowest index.
std::uint32_t nearestInPalette(std::uint32_t color) {
    std::uint32_t nearest = 0;
    std::int32_t leastDistance = std::numeric_limits<std::int32_t>::max();
    for (const std::uint32_t entry : plot_style::palette) {
        const std::int32_t distance = squaredDifference(color, entry, 0) +
                                      squaredDifference(color, entry, 8) +
                                      squaredDifference(color, entry, 16);
        if (distance < leastDistance) {
            leastDistance = distance;
            nearest = entry;
        }
    }
    return nearest;
}

}  // namespace

bool CPlotStyle::updateColor(int rgb) {
    std::int32_t color = objectColor;
    std::int32_t modeColor = objectColor;
    if (rgb == objectColor) {
        colorPolicy_ &= ~explicitColorBit;
        if (colorPolicy_ == ditherBit) {
            if (color_ == objectColor) {
                return false;
            }
        } else {
            color = modeColor = static_cast<std::int32_t>(byIndex | colorBits);
        }
    } else {
        colorPolicy_ =
            isGrayScale() ? colorPolicy_ & ~explicitColorBit : colorPolicy_ | explicitColorBit;
        const std::uint32_t wanted = static_cast<std::uint32_t>(rgb) & colorBits;
        const std::uint32_t wantedRgb = exchangeRedAndBlue(wanted);
        const std::uint32_t nearest = nearestInPalette(wantedRgb);
        // Existing files hold both byte orders: a colour of the palette keeps red in the low
        // byte, the nearest one has blue there.
        if (nearest == wantedRgb) {
            color = modeColor = static_cast<std::int32_t>(byIndex | wanted);
        } else {
            color = static_cast<std::int32_t>(byIndex | nearest);
            modeColor = static_cast<std::int32_t>(trueColor | wanted);
        }
    }
    const bool changed = color != color_ || modeColor != modeColor_;
    color_ = color;
    modeColor_ = modeColor;
    return changed;
}

int CPlotStyle::color2rgb() const {
    if (color_ == objectColor) {
        return objectColor;
    }
    const auto color = static_cast<std::uint32_t>(color_);
    if (colorPolicy_ != ditherBit) {
        return static_cast<int>(exchangeRedAndBlue(static_cast<std::uint32_t>(modeColor_)));
    }
    if (byteAt(color, 24) == byteAt(byIndex, 24)) {
        return static_cast<std::int16_t>(color);
    }
    return static_cast<int>(exchangeRedAndBlue(color));
}

#include <gtest/gtest.h>
#include <wx/colour.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include <platen/gui_look.h>
#include "platform/utcore/theme_table.h"

namespace {

using ut::EGuiColor;

/// Relative luminance of 0xRRGGBB, 0 to 1, as sRGB defines it.
double luminance(std::uint32_t rgb) {
    const auto linear = [rgb](unsigned shift) {
        const double value = static_cast<double>(rgb >> shift & 0xFF) / 255;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

/// 1 (equal) to 21 (black on white).
double contrast(std::uint32_t one, std::uint32_t other) {
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

TEST(Themes, CanBeReadOnTheirBackgrounds) {
    using enum EGuiColor;
    const std::vector backgrounds{WindowBackground, PanelBackground, FieldBackground,
                                  ButtonBackground};
    const struct {
        std::vector<EGuiColor> colors;
        std::vector<EGuiColor> backgrounds;
        double contrast;
    } pairs[] = {
        {{Text, Link, Error, Warning}, backgrounds, 4.5},
        {{HighlightText}, {Highlight}, 4.5},
        {{DisabledText}, backgrounds, 3.0},
        {{Border}, backgrounds, 1.5},
        {{Highlight}, {WindowBackground, PanelBackground, FieldBackground}, 1.5},
        {{PrintableArea}, {Paper}, 3.0},
        {{Paper}, {PreviewBackground}, 3.0},
    };
    for (const auto& pair : pairs) {
        for (const EGuiColor color : pair.colors) {
            for (const EGuiColor background : pair.backgrounds) {
                const ut::ThemeColors& front = ut::themeTable[static_cast<int>(color)];
                const ut::ThemeColors& back = ut::themeTable[static_cast<int>(background)];
                EXPECT_GE(
                    std::min(contrast(front.light, back.light), contrast(front.dark, back.dark)),
                    pair.contrast)
                    << static_cast<int>(color) << " on " << static_cast<int>(background);
            }
        }
    }
}

TEST(Themes, GiveColorsInTheOrderOfTheirBytes) {
    // A value that is none leaves the theme.
    for (const auto theme :
         {ut::EGuiColorTheme::Dark, ut::EGuiColorTheme{2}, ut::EGuiColorTheme::Light}) {
        EXPECT_TRUE(wut::guiSetColorTheme(theme));
        for (const ut::ThemeColors& row : ut::themeTable) {
            const std::uint32_t rgb = theme == ut::EGuiColorTheme::Light ? row.light : row.dark;
            const wxColour color = wut::guiColor(row.color);
            EXPECT_EQ(color, wxColour(rgb >> 16 & 0xFF, rgb >> 8 & 0xFF, rgb & 0xFF));
            EXPECT_EQ(ut::guiColorRef(row.color), color.GetRGB());
        }
    }
    for (const int value : {-1, ut::guiColorCount}) {
        EXPECT_EQ(wut::guiColor(static_cast<EGuiColor>(value)), wxColour(0, 0, 0));
        EXPECT_EQ(wut::guiSize(static_cast<ut::EGuiSize>(value)), 0);
    }
    EXPECT_EQ(wut::guiSize(ut::EGuiSize{0}), 10);
    EXPECT_STREQ(wut::guiFontName(ut::EGuiFontName::Caption), L"Open Sans");
}

}  // namespace

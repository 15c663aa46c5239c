#include <gtest/gtest.h>
#include <wx/colour.h>

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
    const double low = std::min(luminance(one), luminance(other));
    const double high = std::max(luminance(one), luminance(other));
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
                SCOPED_TRACE(testing::Message()
                             << static_cast<int>(color) << " on " << static_cast<int>(background));
                const ut::ThemeColors& front = ut::themeTable[static_cast<int>(color)];
                const ut::ThemeColors& back = ut::themeTable[static_cast<int>(background)];
                EXPECT_GE(contrast(front.light, back.light), pair.contrast) << "light";
                EXPECT_GE(contrast(front.dark, back.dark), pair.contrast) << "dark";
            }
        }
    }
}

TEST(Themes, GiveColorsInTheOrderOfTheirBytes) {
    for (const auto theme : {ut::EGuiColorTheme::Dark, ut::EGuiColorTheme::Light}) {
        EXPECT_TRUE(wut::guiSetColorTheme(theme));
        for (const ut::ThemeColors& row : ut::themeTable) {
            const std::uint32_t rgb = theme == ut::EGuiColorTheme::Dark ? row.dark : row.light;
            const wxColour color = wut::guiColor(row.color);
            EXPECT_EQ(color.GetRed() << 16 | color.GetGreen() << 8 | color.GetBlue(),
                      static_cast<int>(rgb));
            EXPECT_EQ(color.Alpha(), 255);
            EXPECT_EQ(ut::guiColorRef(row.color), color.GetRGB());
        }
    }
}

TEST(Themes, SurviveValuesThatAreNone) {
    EXPECT_TRUE(wut::guiSetColorTheme(ut::EGuiColorTheme::Dark));
    EXPECT_TRUE(wut::guiSetColorTheme(ut::EGuiColorTheme{2}));
    EXPECT_EQ(ut::ThemeColorManager::getInstance().theme(), ut::EGuiColorTheme::Dark);
    EXPECT_TRUE(wut::guiSetColorTheme(ut::EGuiColorTheme::Light));
    for (const int value : {-1, ut::guiColorCount}) {
        EXPECT_EQ(wut::guiColor(static_cast<EGuiColor>(value)), wxColour(0, 0, 0));
        EXPECT_EQ(wut::guiSize(static_cast<ut::EGuiSize>(value)), 0);
    }
    EXPECT_EQ(wut::guiSize(ut::EGuiSize{0}), 10);
    EXPECT_STREQ(wut::guiFontName(ut::EGuiFontName::Caption), L"Open Sans");
}

}  // namespace

#include <gtest/gtest.h>
#include <wx/colour.h>

#include <cmath>
#include <cstdint>

#include "gui_look.h"
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
    constexpr double text = 4.5;
    constexpr double mark = 1.5;
    const struct {
        EGuiColor color;
        std::initializer_list<EGuiColor> backgrounds;
        double contrast;
    } pairs[] = {
        {Text, {WindowBackground, PanelBackground, FieldBackground, ButtonBackground}, text},
        {Link, {WindowBackground, PanelBackground, FieldBackground, ButtonBackground}, text},
        {Error, {WindowBackground, PanelBackground, FieldBackground, ButtonBackground}, text},
        {Warning, {WindowBackground, PanelBackground, FieldBackground, ButtonBackground}, text},
        {HighlightText, {Highlight}, text},
        {DisabledText, {WindowBackground, PanelBackground, FieldBackground, ButtonBackground}, 3.0},
        {Border, {WindowBackground, PanelBackground, FieldBackground, ButtonBackground}, mark},
        {Highlight, {WindowBackground, PanelBackground, FieldBackground}, mark},
        {PrintableArea, {Paper}, 3.0},
        {Paper, {PreviewBackground}, 3.0},
    };
    for (const auto& pair : pairs) {
        for (const EGuiColor background : pair.backgrounds) {
            const ut::ThemeColors& front = ut::themeTable[static_cast<int>(pair.color)];
            const ut::ThemeColors& back = ut::themeTable[static_cast<int>(background)];
            const auto name = [&] {
                return std::to_string(static_cast<int>(pair.color)) + " on " +
                       std::to_string(static_cast<int>(background));
            };
            EXPECT_GE(contrast(front.light, back.light), pair.contrast) << "light, " << name();
            EXPECT_GE(contrast(front.dark, back.dark), pair.contrast) << "dark, " << name();
        }
    }
}

TEST(Themes, GiveColorsInTheOrderOfTheirBytes) {
    for (const auto theme : {ut::EGuiColorTheme::Dark, ut::EGuiColorTheme::Light}) {
        EXPECT_TRUE(wut::guiSetColorTheme(theme));
        for (const ut::ThemeColors& row : ut::themeTable) {
            const std::uint32_t rgb = theme == ut::EGuiColorTheme::Dark ? row.dark : row.light;
            const wxColour color = wut::guiColor(row.color);
            EXPECT_EQ(color.GetRed(), rgb >> 16);
            EXPECT_EQ(color.GetGreen(), rgb >> 8 & 0xFF);
            EXPECT_EQ(color.GetBlue(), rgb & 0xFF);
            EXPECT_EQ(color.Alpha(), 255);
            EXPECT_EQ(ut::guiColorRef(row.color), color.GetRGB());
        }
    }
}

TEST(Themes, SurviveValuesThatAreNone) {
    EXPECT_TRUE(wut::guiSetColorTheme(ut::EGuiColorTheme::Dark));
    for (const int value : {-1, 2, 1 << 30}) {
        EXPECT_TRUE(wut::guiSetColorTheme(static_cast<ut::EGuiColorTheme>(value)));
        EXPECT_EQ(ut::ThemeColorManager::getInstance().theme(), ut::EGuiColorTheme::Dark);
    }
    EXPECT_TRUE(wut::guiSetColorTheme(ut::EGuiColorTheme::Light));
    for (const int value : {-1, ut::guiColorCount, 1 << 30}) {
        EXPECT_EQ(wut::guiColor(static_cast<EGuiColor>(value)), wxColour(0, 0, 0));
        EXPECT_EQ(wut::guiSize(static_cast<ut::EGuiSize>(value)), 0);
    }
    EXPECT_EQ(wut::guiSize(ut::EGuiSize{0}), 10);
    for (const int value : {0, 1, 2, -1}) {
        EXPECT_STREQ(wut::guiFontName(static_cast<ut::EGuiFontName>(value)), L"Open Sans");
    }
}

}  // namespace

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/colour.h>
#include <wx/dcmemory.h>
#include <wx/fontenum.h>
#include <wx/frame.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tuple>
#include <vector>

#include <platen/gui_look.h>
#include "gui/look/font_face.h"
#include "platform/utcore/theme_table.h"

namespace {

using ut::EGuiColor;

class Fonts : public testing::Test {
protected:
    Fonts() : dc_(bitmap_) {
        // A face that surely differs from the GUI's.
        text_->SetFont(font_);
        dc_.SetFont(font_);
    }

    wxFrame frame_{nullptr, wxID_ANY, "Fonts"};
    wxStaticText* text_ = new wxStaticText(&frame_, wxID_ANY, "Paper size");
    wxFont font_ = wxFont(wxFontInfo(13).Family(wxFONTFAMILY_TELETYPE).Bold().Underlined());
    wxBitmap bitmap_{8, 8};
    wxMemoryDC dc_;
};

TEST_F(Fonts, GetTheFaceOfTheGui) {
    ASSERT_TRUE(wut::isFontAvailable(L"Open Sans"));
    ASSERT_NE(font_.GetFaceName(), "Open Sans");
    wxFont expected = font_;
    ASSERT_TRUE(wut::setGuiFont(&expected));
    EXPECT_EQ(expected.GetFaceName(), "Open Sans");
    EXPECT_EQ(expected.GetPointSize(), 13);
    EXPECT_EQ(expected.GetWeight(), wxFONTWEIGHT_BOLD);
    wut::setGuiFont(text_);
    EXPECT_EQ(text_->GetFont(), expected);
    wut::setGuiFont(&dc_);
    EXPECT_EQ(dc_.GetFont(), expected);
}

TEST_F(Fonts, StayWhereTheFaceIsMissing) {
    for (const wchar_t* face : {L"No Such Face 7", L"", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_FALSE(wut::isFontAvailable(face));
        wxFont font = font_;
        EXPECT_FALSE(wut::setFace(font, face));
        wut::setFace(*text_, face);
        wut::setFace(dc_, face);
        for (const wxFont& kept : {font, text_->GetFont(), dc_.GetFont()}) {
            EXPECT_EQ(kept, font_);
        }
    }
    // And where there is nothing to set it for.
    EXPECT_FALSE(wut::setGuiFont(static_cast<wxFont*>(nullptr)));
    wut::setGuiFont(static_cast<wxWindow*>(nullptr));
    wut::setGuiFont(static_cast<wxDC*>(nullptr));
    wut::setGuiFont(static_cast<wxMenuItem*>(nullptr));
    wut::setFontSize(nullptr, 17, true);
    wut::setFontBold(nullptr, true);
}

TEST_F(Fonts, ChangeInSizeAndWeightAlone) {
    wxFont expected = font_;
    expected.SetPointSize(17);
    wut::setFontSize(text_, 17, false);
    EXPECT_EQ(text_->GetFont(), expected);
    expected.SetNumericWeight(400);
    wut::setFontBold(text_, false);
    EXPECT_EQ(text_->GetFont(), expected);
    wut::setFontSize(text_, 17, true);
    expected.SetNumericWeight(700);
    EXPECT_EQ(text_->GetFont(), expected);
    wut::setFontBold(text_, true);
    EXPECT_EQ(text_->GetFont(), expected);
}

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
    const std::tuple<std::vector<EGuiColor>, std::vector<EGuiColor>, double> pairs[] = {
        {{Text, Link, Error, Warning}, backgrounds, 4.5},
        {{HighlightText}, {Highlight}, 4.5},
        {{DisabledText}, backgrounds, 3.0},
        {{Border}, backgrounds, 1.5},
        {{Highlight}, {WindowBackground, PanelBackground, FieldBackground}, 1.5},
        {{PrintableArea}, {Paper}, 3.0},
        {{Paper}, {PreviewBackground}, 3.0},
    };
    for (const auto& [colors, behind, least] : pairs) {
        for (const EGuiColor color : colors) {
            for (const EGuiColor background : behind) {
                const ut::ThemeColors& front = ut::themeTable[static_cast<int>(color)];
                const ut::ThemeColors& back = ut::themeTable[static_cast<int>(background)];
                EXPECT_GE(
                    std::min(contrast(front.light, back.light), contrast(front.dark, back.dark)),
                    least)
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

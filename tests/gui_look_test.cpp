#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/fontenum.h>
#include <wx/frame.h>
#include <wx/stattext.h>

#include "gui/look/font_face.h"
#include "gui_look.h"

namespace {

/// A face that no system has.
constexpr const wchar_t* missing = L"No Such Face 7";

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
    EXPECT_TRUE(expected.GetUnderlined());
    wut::setGuiFont(text_);
    EXPECT_EQ(text_->GetFont(), expected);
    wut::setGuiFont(&dc_);
    EXPECT_EQ(dc_.GetFont(), expected);
}

TEST_F(Fonts, StayWhereTheFaceIsMissing) {
    for (const wchar_t* face : {missing, L"", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_FALSE(wut::isFontAvailable(face));
        wxFont font = font_;
        EXPECT_FALSE(wut::setFace(font, face));
        EXPECT_EQ(font, font_);
        wut::setFace(*text_, face);
        EXPECT_EQ(text_->GetFont(), font_);
        wut::setFace(dc_, face);
        EXPECT_EQ(dc_.GetFont(), font_);
    }
}

TEST_F(Fonts, ChangeInSizeAndWeightAlone) {
    const struct {
        int size;
        bool bold;
        wxFontWeight before;
        wxFontWeight after;
    } sizes[] = {
        {17, false, wxFONTWEIGHT_BOLD, wxFONTWEIGHT_BOLD},
        {17, false, wxFONTWEIGHT_NORMAL, wxFONTWEIGHT_NORMAL},
        {9, true, wxFONTWEIGHT_NORMAL, wxFONTWEIGHT_BOLD},
    };
    for (const auto& row : sizes) {
        wxFont expected = font_;
        expected.SetWeight(row.before);
        text_->SetFont(expected);
        wut::setFontSize(text_, row.size, row.bold);
        expected.SetWeight(row.after);
        expected.SetPointSize(row.size);
        EXPECT_EQ(text_->GetFont(), expected);
    }
    for (const bool bold : {false, true}) {
        wut::setFontBold(text_, bold);
        EXPECT_EQ(text_->GetFont().GetNumericWeight(), bold ? 700 : 400);
        EXPECT_EQ(text_->GetFont().GetPointSize(), 9);
    }
}

}  // namespace

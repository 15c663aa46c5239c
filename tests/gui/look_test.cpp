#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/fontenum.h>
#include <wx/frame.h>
#include <wx/stattext.h>

#include <platen/gui_look.h>
#include "gui/look/font_face.h"

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

TEST_F(Fonts, OfNothingStay) {
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

}  // namespace

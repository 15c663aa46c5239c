#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/tokenzr.h>

#include <platen/gui_text.h>
#include "tests/gui/screen.h"

namespace {

const wxString text =
    "Plot to file: the sheet is scaled to the printable area of the paper.\n"
    "Nonphotorealistically";

wxFont testFont() { return wxFont(wxFontInfo(11).Family(wxFONTFAMILY_SWISS)); }

/// Each line fits or is one word; with blanks for the line feeds it is the text again.
void expectWrapped(const wxString& wrapped, int width, wxDC& dc) {
    wxStringTokenizer lines(wrapped, "\n", wxTOKEN_RET_EMPTY_ALL);
    while (lines.HasMoreTokens()) {
        const wxString line = lines.GetNextToken();
        EXPECT_TRUE(dc.GetTextExtent(line).x <= width || line.find(' ') == wxString::npos) << line;
    }
    wxString joined = wrapped;
    joined.Replace("\n", " ");
    wxString expected = text;
    expected.Replace("\n", " ");
    EXPECT_EQ(joined, expected);
}

TEST(TextWrapper, WrapsWithTheFontItGivesToTheWindow) {
    wxFrame frame(nullptr, wxID_ANY, "Wrapped");
    const wxFont before = frame.GetFont();
    EXPECT_EQ(wut::TextWrapper(&frame, text, -1, nullptr).wrappedText(), text);
    EXPECT_EQ(frame.GetFont(), before);

    wxFont huge = testFont().Scaled(3);
    const wut::TextWrapper wrapper(&frame, text, 300, &huge);
    EXPECT_EQ(frame.GetFont(), huge);
    wxClientDC dc(&frame);
    dc.SetFont(huge);
    expectWrapped(wrapper.wrappedText(), 300, dc);
    EXPECT_GT(wrapper.wrappedText().Freq('\n'), 5);
}

TEST(WrappedString, FitsItsWidthAndKnowsItsSize) {
    wxFrame frame(nullptr, wxID_ANY, "Untouched");
    const wxFont before = frame.GetFont();
    wxImage sheet(960, 260);
    int x = 0;
    for (const int width : {90, 200, 400}) {
        wxImage blank(width + 110, 260);
        blank.SetRGB(wxRect(blank.GetSize()), 255, 255, 255);
        wxBitmap bitmap(blank);
        wut::WrappedString wrapped(&frame, text, width, testFont());
        {
            wxMemoryDC dc(bitmap);
            dc.SetFont(testFont());
            expectWrapped(wrapped.string(), width, dc);
            EXPECT_EQ(wrapped.extents(), dc.GetMultiLineTextExtent(wrapped.string()));
            wrapped.drawText(dc, wxPoint(10, 10), wxColour(150, 0, 30));
        }
        EXPECT_EQ(wrapped.font(), testFont());
        EXPECT_FALSE(wrapped.empty());
        const wxImage drawn = bitmap.ConvertToImage();
        const wxRect ink = difference(blank, drawn);
        EXPECT_TRUE(wxRect(wxPoint(10, 10), wrapped.extents()).Inflate(2).Contains(ink));
        EXPECT_GT(ink.height, wrapped.extents().y / 2);
        wxImageHistogram colours;
        drawn.ComputeHistogram(colours);
        EXPECT_EQ(colours.count(wxImageHistogram::MakeKey(150, 0, 30)), 1u);
        sheet.Paste(drawn, x, 0);
        x += drawn.GetWidth();
    }
    EXPECT_EQ(frame.GetFont(), before);
    leavePicture("text_wrapped", sheet);
}

TEST(WrappedString, IsEmptyWithoutText) {
    const wut::WrappedString none;
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(none.extents(), wxSize(0, 0));
    const wut::WrappedString empty(nullptr, "", 100, testFont());
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.extents().x, 0);
    EXPECT_EQ(empty.font(), testFont());
}

}  // namespace

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/tokenzr.h>

#include <vector>

#include "gui_text.h"
#include "tests/support/gui.h"

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

const wxColour ink(150, 0, 30);

/// Whether a pixel in `place` is of the ink's colour, or, when not `all` of it, tinged with it.
bool hasInk(const wxImage& image, const wxRect& place, bool all) {
    const wxRect inside = wxRect(place).Intersect(wxRect(image.GetSize()));
    for (int y = inside.GetTop(); y <= inside.GetBottom(); ++y) {
        for (int x = inside.GetLeft(); x <= inside.GetRight(); ++x) {
            const int red = image.GetRed(x, y);
            const int green = image.GetGreen(x, y);
            if (all ? red == ink.Red() && green == ink.Green() : red - green > 40) {
                return true;
            }
        }
    }
    return false;
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
    wxBitmap bitmap(960, 260);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    std::vector<wxRect> places;
    int x = 10;
    for (const int width : {90, 200, 400}) {
        wut::WrappedString wrapped(&frame, text, width, testFont());
        dc.SetFont(testFont());
        expectWrapped(wrapped.string(), width, dc);
        EXPECT_EQ(wrapped.extents(), dc.GetMultiLineTextExtent(wrapped.string()));
        EXPECT_EQ(wrapped.font(), testFont());
        EXPECT_FALSE(wrapped.empty());

        dc.SetPen(*wxLIGHT_GREY_PEN);
        dc.DrawLine(x + width, 0, x + width, 260);
        const wxRect place(wxPoint(x, 10), wrapped.extents());
        wrapped.drawText(dc, place.GetPosition(), ink);
        places.push_back(place);
        x += width + 110;
    }
    EXPECT_EQ(frame.GetFont(), before);
    dc.SelectObject(wxNullBitmap);
    const wxImage drawn = bitmap.ConvertToImage();
    leavePicture("text_wrapped", drawn);
    for (const wxRect& place : places) {
        EXPECT_TRUE(hasInk(drawn, place, true)) << place.x;
        wxRect below = place;
        below.Offset(0, place.height + 1);
        EXPECT_FALSE(hasInk(drawn, below, false)) << place.x;
    }
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

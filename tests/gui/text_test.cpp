#include <gtest/gtest.h>
#include <wx/arrstr.h>
#include <wx/bitmap.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>

#include <platen/gui_text.h>
#include "tests/gui/screen.h"

namespace {

const wxString text =
    "Plot to file: the sheet is scaled to the printable area of the paper.\n"
    "\n"
    "Nonphotorealistically rendered lines, unconventionally, are wrapped behind long words";

wxFont testFont() { return wxFont(wxFontInfo(11).Family(wxFONTFAMILY_SWISS)); }

/// `text` with as many words in each line as are narrower than `width`, and one at least.
wxString wrappedAt(int width, wxDC& dc) {
    wxArrayString lines;
    for (const wxString& paragraph : wxSplit(text, '\n', '\0')) {
        wxString line;
        for (const wxString& word : wxSplit(paragraph, ' ', '\0')) {
            const wxString longer = line + " " + word;
            if (!line.empty() && dc.GetTextExtent(longer).x >= width) {
                lines.push_back(line);
                line.clear();
            }
            line = line.empty() ? word : line + " " + word;
        }
        lines.push_back(line);
    }
    return wxJoin(lines, '\n', '\0');
}

TEST(TextWrapper, WrapsWithTheFontItGivesToTheWindow) {
    wxFrame frame(nullptr, wxID_ANY, "Wrapped");
    const wxFont before = frame.GetFont();
    EXPECT_EQ(wut::TextWrapper(&frame, text, -1, nullptr).wrappedText(), text);
    EXPECT_EQ(wut::TextWrapper(nullptr, text, 1, nullptr).wrappedText(), text);
    EXPECT_EQ(frame.GetFont(), before);

    wxFont huge = testFont().Scaled(3);
    wut::TextWrapper wrapper(&frame, text, 300, &huge);
    EXPECT_EQ(frame.GetFont(), huge);
    wxClientDC dc(&frame);
    dc.SetFont(huge);
    const wxString wrapped = wrappedAt(300, dc);
    EXPECT_EQ(wrapper.wrappedText(), wrapped);
    EXPECT_GT(wrapped.Freq('\n'), 12);
    wrapper.OnNewLine();
    wrapper.OnOutputLine("more");
    EXPECT_EQ(wrapper.wrappedText(), wrapped + "\nmore");
}

TEST(TextWrapper, TakesBlanksAroundLongWords) {
    wxFrame frame(nullptr, wxID_ANY, "Narrow");
    for (const auto& [given, wrapped] : {
             std::pair("long", "long"),
             {"long words", "long\nwords"},
             {"long   words ", "long  \nwords"},
             {"long\rwords\r\n\r\n", "long\nwords\n\n"},
             {" long", "\nlong"},
             {"", ""},
         }) {
        EXPECT_EQ(wut::TextWrapper(&frame, given, 1, nullptr).wrappedText(), wrapped) << given;
    }
}

TEST(WrappedString, FitsItsWidthAndKnowsItsSize) {
    wxFrame frame(nullptr, wxID_ANY, "Untouched");
    const wxFont before = frame.GetFont();
    wxImage sheet(1820, 300);
    int x = 0;
    for (const int width : {90, 200, 400, -1}) {
        wxImage first;
        for (const char* const ending : {"\r\n", "\n", "\r"}) {
            wxImage blank((width < 0 ? 690 : width) + 110, 300);
            blank.SetRGB(wxRect(blank.GetSize()), 255, 255, 255);
            wxBitmap bitmap(blank);
            wxString given = text;
            given.Replace("\n", ending);
            wut::WrappedString wrapped(&frame, given, width, testFont());
            {
                wxMemoryDC dc(bitmap);
                dc.SetFont(testFont());
                EXPECT_EQ(wrapped.string(), width < 0 ? text : wrappedAt(width, dc));
                EXPECT_EQ(wrapped.extents(), dc.GetMultiLineTextExtent(wrapped.string()));
                wrapped.drawText(dc, wxPoint(10, 10), wxColour(150, 0, 30));
            }
            EXPECT_EQ(wrapped.font(), testFont());
            EXPECT_FALSE(wrapped.empty());
            const wxImage drawn = bitmap.ConvertToImage();
            if (first.IsOk()) {
                EXPECT_TRUE(difference(first, drawn).IsEmpty());
                continue;
            }
            first = drawn;
            const wxRect ink = difference(blank, drawn);
            EXPECT_TRUE(wxRect(wxPoint(10, 10), wrapped.extents()).Inflate(2).Contains(ink));
            EXPECT_GT(ink.height, wrapped.extents().y / 2);
            wxImageHistogram colours;
            drawn.ComputeHistogram(colours);
            EXPECT_EQ(colours.count(wxImageHistogram::MakeKey(150, 0, 30)), 1u);
            sheet.Paste(drawn, x, 0);
            x += drawn.GetWidth();
        }
    }
    EXPECT_EQ(frame.GetFont(), before);
    leavePicture("text_wrapped", sheet);

    const wut::WrappedString none;
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(none.extents(), wxSize(0, 0));
    const wut::WrappedString empty(nullptr, "", 100, testFont());
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.extents().x, 0);
}

}  // namespace

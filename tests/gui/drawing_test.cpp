#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/font.h>
#include <wx/image.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include <platen/gui_images.h>
#include "tests/gui/screen.h"

namespace {

using namespace wut::ImageUtils;

wxImage filledImage(const wxSize& size, const wxColour& colour) {
    wxImage image(size);
    image.SetRGB(wxRect(size), colour.Red(), colour.Green(), colour.Blue());
    return image;
}

/// Opaque but for a frame of so many pixels, which is transparent.
wxBitmap framed(const wxSize& size, const wxColour& colour, int frame = 1) {
    wxImage image = filledImage(size, colour);
    image.InitAlpha();
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const bool inside = wxRect(size).Deflate(frame).Contains(x, y);
            image.SetAlpha(x, y, inside ? wxIMAGE_ALPHA_OPAQUE : wxIMAGE_ALPHA_TRANSPARENT);
        }
    }
    return wxBitmap(image);
}

/// The grey of the paper that texts are drawn on.
const wxColour paper(235, 235, 235);

/// The picture on paper where it is transparent.
wxImage onPaper(const wxBitmap& bitmap) {
    wxImage sheet = filledImage(bitmap.GetSize(), paper);
    sheet.Paste(bitmap.ConvertToImage(), 0, 0, wxIMAGE_ALPHA_BLEND_COMPOSE);
    return sheet;
}

wxRect inkOf(const wxImage& image) {
    return difference(filledImage(image.GetSize(), paper), image);
}

bool shows(const wxImage& image, int grey) {
    const wxRect place(image.GetSize());
    for (int at = 0; at < place.width * place.height; ++at) {
        const unsigned char* const pixel = image.GetData() + at * 3;
        if (std::abs(pixel[0] - grey) < 12 && std::abs(pixel[2] - grey) < 12) {
            return true;
        }
    }
    return false;
}

TEST(WrapText, BreaksALineOnceInItsSecondHalf) {
    wxBitmap bitmap(400, 50);
    wxMemoryDC dc(bitmap);
    const wxRect narrow(0, 0, 1, 50);
    const wxRect wide(0, 0, 10000, 50);
    struct Case {
        const char* text;
        const char* wrapped;
    };
    for (const auto& [text, wrapped] : {
             Case{"aaaa bbbb cccc", "aaaa bbbb\r\ncccc"},
             Case{"a b c d e f", "a b c d\r\ne f"},
             Case{"a b", "a b"},
             Case{"aaaa bbbbbbbb", "aaaa bbbbbbbb"},
             Case{"aa bb\r\ncc dd\ree ff\n", "aa bb\r\ncc dd\r\nee ff"},
             Case{"aaa bb\r\n\r\ncccc dd", "aaa\r\nbb\r\n\r\ncccc\r\ndd"},
             Case{"\n\naaaa bb", "aaaa\r\nbb"},
             Case{"aaaa ", "aaaa\r\n"},
             Case{"", ""},
         }) {
        EXPECT_EQ(wrapText(text, narrow, dc), wrapped) << text;
    }
    EXPECT_EQ(wrapText("aaaa bbbb cccc\rdddd eeee", wide, dc), "aaaa bbbb cccc\r\ndddd eeee");
}

TEST(DrawText, PutsInkOfTheColourWhereItBelongs) {
    const wxSize size(260, 60);
    const wxSize cell(size.x + 10, size.y + 10);
    wxImage sheet = filledImage(wxSize(2 * cell.x, 3 * cell.y), *wxWHITE);
    const struct {
        EFont font;
        bool clear;
        bool highQuality;
        wxPoint cell;
    } cases[] = {
        {EF_Large, false, false, {0, 0}},
        {EF_Large, false, true, {1, 0}},
        {EF_Small, false, false, {0, 1}},
        {EF_Small, false, true, {1, 1}},
        // Only the graphics context knows of alpha everywhere.
        {EF_Small, true, true, {1, 2}},
    };
    for (const auto& entry : cases) {
        SCOPED_TRACE(testing::Message() << entry.cell.x << ", " << entry.cell.y);
        wxBitmap bitmap =
            entry.clear ? framed(size, paper, size.x) : wxBitmap(filledImage(size, paper));
        drawText(bitmap, "Plot style HEAVY 0.25 mm", 20, 10, entry.font, EC_Dark,
                 entry.highQuality);
        const wxImage drawn = onPaper(bitmap);
        const wxRect ink = inkOf(drawn);
        EXPECT_TRUE(wxRect(18, 10, size.x - 18, 30).Contains(ink))
            << ink.x << " " << ink.y << " " << ink.width << " " << ink.height;
        // The large font is bold, too: no width fits both.
        EXPECT_EQ(ink.width > 170, entry.font == EF_Large) << ink.width;
        EXPECT_GT(ink.width, 80);
        EXPECT_TRUE(shows(drawn, 40));
        EXPECT_EQ(bitmap.HasAlpha(), entry.highQuality);
        sheet.Paste(drawn, entry.cell.x * cell.x, entry.cell.y * cell.y);
    }
    leavePicture("images_text", sheet);
}

TEST(DrawText, WrapsWhatIsTooWideWhateverEndsItsLines) {
    wxImage sheet = filledImage(wxSize(260, 120), *wxWHITE);
    for (const bool highQuality : {false, true}) {
        for (const int width : {120, 200}) {
            wxImage first;
            for (const char* const ending : {"\r\n", "\n", "\r"}) {
                wxBitmap bitmap(filledImage(wxSize(width, 120), paper));
                drawText(bitmap,
                         wxString("Plot to file with") + ending + "plot styles of the sheet", 10, 5,
                         EF_Small, EC_Grey, highQuality);
                const wxImage drawn = onPaper(bitmap);
                if (first.IsOk()) {
                    EXPECT_TRUE(difference(first, drawn).IsEmpty());
                    continue;
                }
                first = drawn;
                const wxRect ink = inkOf(drawn);
                // Three lines of 8 points, or two when they fit, none of them cut.
                EXPECT_EQ(ink.height > 30, width == 120) << ink.height;
                EXPECT_GT(ink.height, 18);
                EXPECT_LT(ink.height, 60);
                EXPECT_LT(ink.GetRight(), width - 1);
                EXPECT_TRUE(shows(drawn, 110));
                if (width == 120) {
                    sheet.Paste(drawn, highQuality ? 140 : 0, 0);
                }
            }
        }
    }
    leavePicture("images_text_wrapped", sheet);
}

TEST(DrawTextHighQuality, TakesMasksForTransparency) {
    wxImage image(120, 40);
    image.SetMaskColour(0, 0, 0);
    wxBitmap bitmap(image);
    drawTextHighQuality(bitmap, "Plot", 5, 5, wxFont(wxFontInfo(12)), *wxRED);
    ASSERT_TRUE(bitmap.HasAlpha());
    const wxImage drawn = bitmap.ConvertToImage();
    EXPECT_EQ(drawn.GetAlpha(110, 30), 0);
    EXPECT_GT(*std::max_element(drawn.GetAlpha(), drawn.GetAlpha() + 120 * 40), 200);
}

TEST(DrawOnTop, CoversTheCornerAndKeepsTheRest) {
    wxBitmap bottom(filledImage(wxSize(60, 40), paper));
    wxImage square = filledImage(wxSize(20, 10), wxColour(200, 30, 40));
    square.SetRGB(5, 5, 1, 2, 3);
    square.SetMaskColour(1, 2, 3);
    drawOnTop(bottom, wxBitmap(square));
    const wxImage drawn = bottom.ConvertToImage();
    EXPECT_EQ(inkOf(drawn), wxRect(0, 0, 20, 10));
    EXPECT_EQ(drawn.GetRed(5, 5), 1) << "what the mask hides is drawn";
    EXPECT_EQ(drawn.GetRed(19, 9), 200);
    leavePicture("images_on_top", drawn.Scale(240, 160));
}

TEST(DrawOnBitmap, ScalesTheBottomAndCentresTheTop) {
    const wxBitmap bottom = framed(wxSize(20, 10), wxColour(30, 90, 200));
    const wxBitmap top = framed(wxSize(16, 12), wxColour(240, 160, 20));
    const wxImage both = wut::drawOnBitmap(bottom, top, wxSize(64, 48)).ConvertToImage();
    EXPECT_EQ(both.GetSize(), wxSize(64, 48));
    ASSERT_TRUE(both.HasAlpha());
    EXPECT_EQ(both.GetAlpha(0, 0), 0);
    EXPECT_EQ(both.GetAlpha(12, 24), 255);
    // The top is 16 x 12 pixels, less its frame, in the middle of 64 x 48.
    for (const auto& [x, y, red] : {std::tuple(12, 24, 30),
                                    {24, 24, 30},
                                    {25, 24, 240},
                                    {38, 24, 240},
                                    {39, 24, 30},
                                    {32, 18, 30},
                                    {32, 19, 240},
                                    {32, 28, 240},
                                    {32, 29, 30}}) {
        EXPECT_EQ(both.GetRed(x, y), red) << x << ", " << y;
    }
    leavePicture("images_on_bitmap", both.Scale(320, 240));

    const wxBitmap plain(filledImage(wxSize(5, 5), wxColour(200, 100, 50)));
    const wxImage filled = wut::drawOnBitmap(plain, wxBitmap(), wxSize(40, 40)).ConvertToImage();
    for (const int corner : {0, 39}) {
        EXPECT_EQ(filled.GetAlpha(corner, corner), 255);
        EXPECT_EQ(filled.GetRed(corner, corner), 200);
    }

    const wxImage shrunk = wut::drawOnBitmap(wxBitmap(), top, wxSize(8, 40)).ConvertToImage();
    EXPECT_GT(shrunk.GetAlpha(4, 20), 250);
    EXPECT_EQ(shrunk.GetAlpha(4, 16), 0);
    EXPECT_EQ(shrunk.GetAlpha(4, 23), 0);
}

TEST(Drawing, LeavesOutWhatIsInvalid) {
    wxBitmap red(filledImage(wxSize(8, 8), *wxRED));
    EXPECT_FALSE(wut::drawOnBitmap(wxBitmap(), wxBitmap(), wxSize(8, 8)).IsOk());
    EXPECT_FALSE(wut::drawOnBitmap(red, red, wxSize(0, 8)).IsOk());
    EXPECT_FALSE(wut::drawOnBitmap(red, red, wxSize(8, -1)).IsOk());
    wxBitmap none;
    drawOnTop(red, none);
    drawOnTop(none, red);
    drawText(none, "Plot", 0, 0, EF_Small, EC_White, false);
    drawText(none, "Plot", 0, 0, EF_Small, EC_White, true);
    EXPECT_FALSE(none.IsOk());
}

}  // namespace

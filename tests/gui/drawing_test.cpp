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
    for (int at = 0; at < size.x * size.y; ++at) {
        const bool inside = wxRect(size).Deflate(frame).Contains(at % size.x, at / size.x);
        image.GetAlpha()[at] = inside ? 255 : 0;
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
    for (int at = 0; at < image.GetWidth() * image.GetHeight(); ++at) {
        const unsigned char* const pixel = image.GetData() + at * 3;
        if (std::abs(pixel[0] - grey) < 12 && std::abs(pixel[2] - grey) < 12) {
            return true;
        }
    }
    return false;
}

TEST(ImageTypes, AreSearchedAsOneText) {
    for (const wchar_t* accepted : {L"png", L"PNG", L"Jp2", L"jpeg", L"peg", L"if", L""}) {
        EXPECT_TRUE(wut::isSupportedImageType(accepted)) << accepted;
    }
    for (const wchar_t* refused :
         {L"tiff", L".png", L"pn", L"svg", L"png;", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_FALSE(wut::isSupportedImageType(refused)) << wxString(refused);
    }
}

TEST(WrapText, BreaksALineOnceInItsSecondHalf) {
    wxBitmap bitmap(400, 50);
    wxMemoryDC dc(bitmap);
    for (const auto& [width, text, wrapped] : {
             std::tuple(1, "aaaa bbbb cccc", "aaaa bbbb\r\ncccc"),
             {1, "a b c d e f", "a b c d\r\ne f"},
             {1, "a b", "a b"},
             {1, "aaaa bbbbbbbb", "aaaa bbbbbbbb"},
             {1, "aa bb\r\ncc dd\ree ff\n", "aa bb\r\ncc dd\r\nee ff"},
             {1, "aaa bb\r\n\r\ncccc dd", "aaa\r\nbb\r\n\r\ncccc\r\ndd"},
             {1, "\n\naaaa bb", "aaaa\r\nbb"},
             {1, "aaaa ", "aaaa\r\n"},
             {1, "", ""},
             {10000, "aaaa bbbb cccc\rdddd eeee", "aaaa bbbb cccc\r\ndddd eeee"},
         }) {
        EXPECT_EQ(wrapText(text, wxRect(0, 0, width, 50), dc), wrapped) << text;
    }
}

TEST(DrawText, PutsInkOfTheColourWhereItBelongs) {
    const char* const one = "Plot style HEAVY 0.25 mm";
    const char* const two = "Plot to file with\nplot styles of the sheet";
    const struct {
        const char* text;
        EFont font;
        int width;
        /// Pixels of the ink. The large font is bold, too: no width fits both.
        wxSize least, most;
    } cases[] = {
        {one, EF_Large, 260, {171, 8}, {245, 20}},
        {one, EF_Small, 260, {81, 6}, {170, 16}},
        {two, EF_Small, 200, {81, 18}, {185, 30}},
        // Wrapped, but not cut.
        {two, EF_Small, 120, {50, 31}, {108, 60}},
    };
    wxImage sheet = filledImage(wxSize(780, 320), *wxWHITE);
    for (int number = 0; number < 12; ++number) {
        SCOPED_TRACE(number);
        const auto& entry = cases[number / 3];
        const bool highQuality = number % 3 > 0;
        // Only the graphics context knows of alpha everywhere.
        const bool clear = number % 3 > 1;
        const wxSize size(entry.width, 75);
        const bool isDark = entry.text == one;
        wxImage first;
        for (const char* const ending : {"\r\n", "\n", "\r"}) {
            wxBitmap bitmap =
                clear ? framed(size, paper, size.x) : wxBitmap(filledImage(size, paper));
            wxString text = entry.text;
            text.Replace("\n", ending);
            drawText(bitmap, text, 10, 5, entry.font, isDark ? EC_Dark : EC_Grey, highQuality);
            EXPECT_EQ(bitmap.HasAlpha(), highQuality);
            const wxImage drawn = onPaper(bitmap);
            EXPECT_TRUE(!first.IsOk() || difference(first, drawn).IsEmpty());
            first = drawn;
        }
        const wxRect ink = inkOf(first);
        EXPECT_TRUE(wxRect(8, 5, size.x - 9, 70).Contains(ink)) << ink.x << ", " << ink.y;
        EXPECT_TRUE(wxRect(wxPoint(entry.least.x, entry.least.y), entry.most - entry.least)
                        .Contains(ink.width, ink.height))
            << ink.width << " x " << ink.height;
        EXPECT_TRUE(shows(first, isDark ? 40 : 110));
        sheet.Paste(first, number % 3 * 260, number / 3 * 80);
    }
    leavePicture("images_text", sheet);
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

TEST(DrawOnBitmap, ScalesTheBottomAndCentresTheTop) {
    const wxBitmap bottom = framed(wxSize(20, 10), wxColour(30, 90, 200));
    const wxBitmap top = framed(wxSize(16, 12), wxColour(240, 160, 20));
    const wxBitmap plain(filledImage(wxSize(5, 5), wxColour(200, 100, 50)));
    const wxImage both = wut::drawOnBitmap(bottom, top, wxSize(64, 48)).ConvertToImage();
    const wxImage filled = wut::drawOnBitmap(plain, wxBitmap(), wxSize(40, 40)).ConvertToImage();
    const wxImage shrunk = wut::drawOnBitmap(wxBitmap(), top, wxSize(8, 40)).ConvertToImage();
    EXPECT_EQ(both.GetSize(), wxSize(64, 48));
    // The top is 16 x 12 pixels, less its frame, in the middle of 64 x 48. Red of -1: transparent.
    const struct {
        const wxImage& image;
        int x, y, red;
    } places[] = {{both, 0, 0, -1},    {both, 12, 24, 30},   {both, 24, 24, 30},
                  {both, 25, 24, 240}, {both, 38, 24, 240},  {both, 39, 24, 30},
                  {both, 32, 18, 30},  {both, 32, 19, 240},  {both, 32, 28, 240},
                  {both, 32, 29, 30},  {filled, 0, 0, 200},  {filled, 39, 39, 200},
                  {shrunk, 4, 16, -1}, {shrunk, 4, 20, 240}, {shrunk, 4, 23, -1}};
    for (const auto& [image, x, y, red] : places) {
        ASSERT_TRUE(image.HasAlpha());
        EXPECT_EQ(image.GetAlpha(x, y) > 250 ? image.GetRed(x, y) : -image.GetAlpha(x, y) - 1, red)
            << x << ", " << y;
    }
    leavePicture("images_on_bitmap", both.Scale(320, 240));
}

TEST(DrawOnTop, CoversTheCornerAndKeepsTheRest) {
    wxBitmap bottom(filledImage(wxSize(60, 40), paper));
    wxImage square = filledImage(wxSize(20, 10), wxColour(200, 30, 40));
    square.SetRGB(5, 5, 1, 2, 3);
    square.SetMaskColour(1, 2, 3);
    wxBitmap none;
    drawOnTop(bottom, none);
    drawOnTop(bottom, wxBitmap(square));
    drawOnTop(none, bottom);
    EXPECT_FALSE(none.IsOk());
    const wxImage drawn = bottom.ConvertToImage();
    EXPECT_EQ(inkOf(drawn), wxRect(0, 0, 20, 10));
    EXPECT_EQ(drawn.GetRed(5, 5), 1) << "what the mask hides is drawn";
    EXPECT_EQ(drawn.GetRed(19, 9), 200);
    leavePicture("images_on_top", drawn.Scale(240, 160));
    // What else is invalid is left out.
    EXPECT_FALSE(wut::drawOnBitmap(none, none, wxSize(8, 8)).IsOk());
    EXPECT_FALSE(wut::drawOnBitmap(bottom, bottom, wxSize(0, 8)).IsOk());
    EXPECT_FALSE(wut::drawOnBitmap(bottom, bottom, wxSize(8, -1)).IsOk());
    drawText(none, "Plot", 0, 0, EF_Small, EC_White, false);
    drawText(none, "Plot", 0, 0, EF_Small, EC_White, true);
}

}  // namespace

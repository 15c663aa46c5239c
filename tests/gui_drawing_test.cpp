#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/font.h>
#include <wx/image.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "gui_images.h"
#include "tests/support/gui.h"

namespace {

using namespace wut::ImageUtils;

constexpr unsigned char paper = 235;

wxBitmap opaqueBitmap(int width, int height) {
    wxImage image(width, height);
    image.SetRGB(wxRect(0, 0, width, height), paper, paper, paper);
    return wxBitmap(image);
}

wxBitmap clearBitmap(int width, int height) {
    wxImage image(width, height);
    image.InitAlpha();
    std::fill_n(image.GetAlpha(), width * height, wxIMAGE_ALPHA_TRANSPARENT);
    return wxBitmap(image);
}

unsigned char alphaAt(const wxImage& image, int x, int y) {
    return image.HasAlpha() ? image.GetAlpha(x, y) : 255;
}

/// The smallest rectangle around what differs.
wxRect changed(const wxImage& before, const wxImage& after) {
    wxRect place;
    for (int y = 0; y < after.GetHeight(); ++y) {
        for (int x = 0; x < after.GetWidth(); ++x) {
            const bool visible = alphaAt(before, x, y) != 0 || alphaAt(after, x, y) != 0;
            if (alphaAt(before, x, y) != alphaAt(after, x, y) ||
                (visible && before.GetGreen(x, y) != after.GetGreen(x, y))) {
                place.Union(wxRect(x, y, 1, 1));
            }
        }
    }
    return place;
}

/// Whether a pixel is as good as opaque and of that grey.
bool shows(const wxImage& image, int grey) {
    for (int y = 0; y < image.GetHeight(); ++y) {
        for (int x = 0; x < image.GetWidth(); ++x) {
            if (alphaAt(image, x, y) > 200 && std::abs(image.GetRed(x, y) - grey) < 12 &&
                std::abs(image.GetBlue(x, y) - grey) < 12) {
                return true;
            }
        }
    }
    return false;
}

/// On a chequered ground where it is transparent.
void show(wxImage& sheet, const wxImage& picture, int x, int y) {
    wxImage ground(picture.GetSize());
    for (int row = 0; row < ground.GetHeight(); ++row) {
        for (int column = 0; column < ground.GetWidth(); ++column) {
            const unsigned char shade = (row / 8 + column / 8) % 2 == 0 ? 170 : 200;
            ground.SetRGB(column, row, shade, shade, shade);
        }
    }
    sheet.Paste(ground, x, y);
    sheet.Paste(picture, x, y, wxIMAGE_ALPHA_BLEND_COMPOSE);
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
    constexpr int width = 260;
    constexpr int height = 60;
    wxImage sheet(2 * width + 30, 4 * (height + 10) + 10);
    sheet.SetRGB(wxRect(sheet.GetSize()), 255, 255, 255);
    int row = 0;
    for (const EFont font : {EF_Large, EF_Small}) {
        for (const bool clear : {false, true}) {
            int inkWidth[2] = {};
            for (const bool highQuality : {false, true}) {
                // Only the graphics context knows of alpha everywhere.
                if (clear && !highQuality) {
                    continue;
                }
                SCOPED_TRACE(std::to_string(font) + (clear ? " clear" : " opaque") +
                             (highQuality ? ", high quality" : ", plain"));
                wxBitmap bitmap = clear ? clearBitmap(width, height) : opaqueBitmap(width, height);
                const wxImage before = bitmap.ConvertToImage();
                drawText(bitmap, "Plot style HEAVY 0.25 mm", 20, 10, font, EC_Dark, highQuality);
                const wxImage after = bitmap.ConvertToImage();
                const wxRect ink = changed(before, after);
                EXPECT_TRUE(wxRect(18, 10, width - 18, 30).Contains(ink))
                    << ink.x << " " << ink.y << " " << ink.width << " " << ink.height;
                EXPECT_TRUE(shows(after, 40));
                EXPECT_EQ(bitmap.HasAlpha(), highQuality);
                inkWidth[highQuality ? 1 : 0] = ink.width;
                show(sheet, after, 10 + (highQuality ? width + 10 : 0), 10 + row * (height + 10));
            }
            EXPECT_GT(inkWidth[1], 80);
            if (!clear) {
                EXPECT_NEAR(inkWidth[0], inkWidth[1], 20);
            }
            ++row;
        }
    }
    leavePicture("images_text", sheet);
}

TEST(DrawText, WrapsWhatIsTooWide) {
    wxImage sheet(280, 140);
    int column = 0;
    for (const bool highQuality : {false, true}) {
        wxBitmap bitmap = opaqueBitmap(120, 120);
        wxImage before = bitmap.ConvertToImage();
        drawText(bitmap, "Plot to file with\nplot styles of the sheet", 10, 5, EF_Small, EC_Grey,
                 highQuality);
        const wxImage after = bitmap.ConvertToImage();
        const wxRect ink = changed(before, after);
        // Three lines of 8 points, none of them cut.
        EXPECT_GT(ink.height, 30);
        EXPECT_LT(ink.height, 60);
        EXPECT_LT(ink.GetRight(), 119);
        EXPECT_TRUE(shows(after, 110));
        sheet.Paste(after, 10 + column++ * 135, 10);
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
    wxBitmap bottom = opaqueBitmap(60, 40);
    wxImage square(20, 10);
    square.SetRGB(wxRect(0, 0, 20, 10), 200, 30, 40);
    square.SetRGB(5, 5, 1, 2, 3);
    square.SetMaskColour(1, 2, 3);
    drawOnTop(bottom, wxBitmap(square));
    const wxImage drawn = bottom.ConvertToImage();
    EXPECT_EQ(changed(opaqueBitmap(60, 40).ConvertToImage(), drawn), wxRect(0, 0, 20, 10));
    EXPECT_EQ(drawn.GetRed(5, 5), 1) << "what the mask hides is drawn";
    EXPECT_EQ(drawn.GetRed(19, 9), 200);
    leavePicture("images_on_top", drawn.Scale(240, 160));

    wxBitmap none;
    drawOnTop(bottom, none);
    drawOnTop(none, bottom);
    EXPECT_FALSE(none.IsOk());
}

/// `size` pixels, all of that colour and opaque but for a frame of one pixel, which is transparent.
wxBitmap framed(const wxSize& size, const wxColour& colour) {
    wxImage image(size);
    image.SetRGB(wxRect(size), colour.Red(), colour.Green(), colour.Blue());
    image.InitAlpha();
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const bool inside = wxRect(size).Deflate(1).Contains(x, y);
            image.SetAlpha(x, y, inside ? wxIMAGE_ALPHA_OPAQUE : wxIMAGE_ALPHA_TRANSPARENT);
        }
    }
    return wxBitmap(image);
}

TEST(DrawOnBitmap, ScalesTheBottomAndCentresTheTop) {
    const wxBitmap bottom = framed(wxSize(20, 10), wxColour(30, 90, 200));
    const wxBitmap top = framed(wxSize(16, 12), wxColour(240, 160, 20));
    const wxBitmap both = wut::drawOnBitmap(bottom, top, wxSize(64, 48));
    ASSERT_TRUE(both.IsOk());
    EXPECT_EQ(both.GetSize(), wxSize(64, 48));
    ASSERT_TRUE(both.HasAlpha());
    const wxImage image = both.ConvertToImage();
    EXPECT_EQ(image.GetAlpha(0, 0), 0);
    EXPECT_EQ(image.GetAlpha(12, 24), 255);
    EXPECT_EQ(image.GetRed(12, 24), 30);
    // The top is 16 x 12 pixels, less its frame, in the middle of 64 x 48.
    for (const auto& [x, y, red] : {std::tuple(24, 24, 30),
                                    {25, 24, 240},
                                    {38, 24, 240},
                                    {39, 24, 30},
                                    {32, 18, 30},
                                    {32, 19, 240},
                                    {32, 28, 240},
                                    {32, 29, 30}}) {
        EXPECT_EQ(image.GetRed(x, y), red) << x << ", " << y;
    }
    leavePicture("images_on_bitmap", image.Scale(320, 240));

    wxImage plain(5, 5);
    plain.SetRGB(wxRect(0, 0, 5, 5), 200, 100, 50);
    const wxImage filled =
        wut::drawOnBitmap(wxBitmap(plain), wxBitmap(), wxSize(40, 40)).ConvertToImage();
    for (const int corner : {0, 39}) {
        EXPECT_EQ(filled.GetAlpha(corner, corner), 255);
        EXPECT_EQ(filled.GetRed(corner, corner), 200);
    }

    const wxImage shrunk = wut::drawOnBitmap(wxBitmap(), top, wxSize(8, 40)).ConvertToImage();
    EXPECT_EQ(shrunk.GetSize(), wxSize(8, 40));
    EXPECT_GT(shrunk.GetAlpha(4, 20), 250);
    EXPECT_EQ(shrunk.GetAlpha(4, 16), 0);
    EXPECT_EQ(shrunk.GetAlpha(4, 23), 0);
}

TEST(DrawOnBitmap, LeavesOutWhatIsInvalid) {
    const wxBitmap red = framed(wxSize(8, 8), *wxRED);
    EXPECT_EQ(wut::drawOnBitmap(red, wxBitmap(), wxSize(8, 8)).ConvertToImage().GetAlpha(4, 4),
              255);
    EXPECT_EQ(wut::drawOnBitmap(wxBitmap(), red, wxSize(8, 8)).ConvertToImage().GetAlpha(4, 4),
              255);
    EXPECT_FALSE(wut::drawOnBitmap(wxBitmap(), wxBitmap(), wxSize(8, 8)).IsOk());
    EXPECT_FALSE(wut::drawOnBitmap(red, red, wxSize(0, 8)).IsOk());
    EXPECT_FALSE(wut::drawOnBitmap(red, red, wxSize(8, -1)).IsOk());
    wxBitmap none;
    drawText(none, "Plot", 0, 0, EF_Small, EC_White, false);
    drawText(none, "Plot", 0, 0, EF_Small, EC_White, true);
    EXPECT_FALSE(none.IsOk());
}

}  // namespace

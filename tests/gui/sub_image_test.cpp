#include <gtest/gtest.h>
#include <wx/image.h>

#include <algorithm>
#include <optional>
#include <random>

#include <platen/gui_images.h>
#include "gui/images/sub_image.h"

namespace {

using sub_image::Picture;
using sub_image::Place;
using wut::ImageUtils::eraseSubImage;
using wut::ImageUtils::findSubImage;

Picture pictureOf(const wxImage& image) {
    return {image.GetData(), static_cast<std::size_t>(image.GetWidth()),
            static_cast<std::size_t>(image.GetHeight())};
}

/// Place by place.
std::optional<Place> findPlainly(const Picture& image, const Picture& sub) {
    for (std::size_t y = 0; y + sub.height <= image.height; ++y) {
        for (std::size_t x = 0; x + sub.width <= image.width; ++x) {
            std::size_t row = 0;
            while (row < sub.height &&
                   std::equal(sub.at(0, row), sub.at(sub.width, row), image.at(x, y + row))) {
                ++row;
            }
            if (row == sub.height) {
                return Place{x, y};
            }
        }
    }
    return std::nullopt;
}

std::optional<Place> find(wxImage& image, const wxImage& sub) {
    int x = -1;
    int y = -1;
    if (!findSubImage(image, sub, x, y)) {
        EXPECT_TRUE(x == -1 && y == -1);
        return std::nullopt;
    }
    return Place{static_cast<std::size_t>(x), static_cast<std::size_t>(y)};
}

/// The blue of each pixel is one of the first `colours` numbers.
wxImage randomImage(std::mt19937& random, int width, int height, unsigned colours) {
    wxImage image(width, height);
    for (int at = 0; at < width * height; ++at) {
        image.GetData()[at * 3 + 2] = static_cast<unsigned char>(random() % colours);
    }
    return image;
}

TEST(FindSubImage, FindsTheFirstPlaceInEveryWay) {
    std::mt19937 random(4711);
    int found = 0;
    for (int round = 0; round < 20000; ++round) {
        const auto upTo = [&](int most) {
            return static_cast<int>(random() % (static_cast<unsigned>(most) + 1));
        };
        wxImage image = randomImage(random, 1 + upTo(40), 1 + upTo(9), 2 + random() % 2);
        const wxSize size(1 + upTo(round % 3 == 0 ? 30 : 3), 1 + upTo(3));
        wxImage sub = randomImage(random, size.x, size.y, 2);
        if (round % 2 == 0 && size.x <= image.GetWidth() && size.y <= image.GetHeight()) {
            sub = image.GetSubImage(wxRect(
                wxPoint(upTo(image.GetWidth() - size.x), upTo(image.GetHeight() - size.y)), size));
        }
        const Picture whole = pictureOf(image);
        const Picture part = pictureOf(sub);
        const std::optional<Place> expected = findPlainly(whole, part);
        found += expected ? 1 : 0;
        ASSERT_EQ(find(image, sub), expected) << "round " << round;
        if (part.width > whole.width || part.height > whole.height) {
            continue;
        }
        ASSERT_EQ(sub_image::findByHashes(whole, part, 0), expected);
        const sub_image::Comparison compared = sub_image::findByComparing(whole, part, 0);
        ASSERT_EQ(compared.found || compared.nextRow + part.height > whole.height
                      ? compared.found
                      : sub_image::findByHashes(whole, part, compared.nextRow),
                  expected);
    }
    EXPECT_TRUE(found > 5000 && found < 18000) << found;
}

TEST(FindSubImage, FindsAmongPlacesThatAreNearlyEqual) {
    wxImage image(400, 300);
    wxImage sub(30, 20);
    sub.SetRGB(29, 19, 0, 0, 1);
    EXPECT_EQ(find(image, sub), std::nullopt);
    image.SetRGB(250, 222, 0, 0, 1);
    EXPECT_FALSE(sub_image::findByComparing(pictureOf(image), pictureOf(sub), 8).found)
        << "not hard enough to need hashes";
    EXPECT_EQ(find(image, sub), (Place{221, 203}));
}

TEST(FindSubImage, LooksAtColoursAlone) {
    wxImage image(4, 3);
    image.SetRGB(2, 0, 255, 0, 0);
    image.SetRGB(0, 1, 255, 0, 0);
    wxImage sub(1, 1);
    sub.SetRGB(0, 0, 255, 0, 0);
    sub.InitAlpha();
    sub.SetAlpha(0, 0, 7);
    sub.SetMaskColour(255, 0, 0);
    EXPECT_EQ(find(image, sub), (Place{2, 0}));
    // Without pixels there is nothing to differ.
    wxImage invalid;
    EXPECT_EQ(find(image, invalid), (Place{0, 0}));
    EXPECT_EQ(find(image, wxImage(5, 0)), (Place{0, 0}));
    EXPECT_EQ(find(invalid, invalid), (Place{0, 0}));
    EXPECT_EQ(find(invalid, image), std::nullopt);
}

TEST(EraseSubImage, MakesThePlaceTransparent) {
    const wxRect place(3, 1, 2, 3);
    for (const bool hasAlpha : {false, true}) {
        for (const bool hasMask : {false, true}) {
            wxImage image(6, 5);
            image.SetRGB(place, 10, 20, 30);
            if (hasAlpha) {
                image.InitAlpha();
            }
            if (hasMask) {
                image.SetMaskColour(250, 1, 2);
            }
            const wxImage before = image;
            int x = -1;
            int y = -1;
            wxImage absent(2, 2);
            absent.SetRGB(0, 0, 9, 9, 9);
            EXPECT_FALSE(eraseSubImage(image, absent, x, y));
            // Found, but no pixel to erase.
            EXPECT_TRUE(eraseSubImage(image, wxImage(), x, y));
            ASSERT_TRUE(eraseSubImage(image, before.GetSubImage(place), x, y));
            EXPECT_EQ(wxPoint(x, y), place.GetPosition());
            for (int row = 0; row < 5; ++row) {
                for (int column = 0; column < 6; ++column) {
                    const bool inside = place.Contains(column, row);
                    EXPECT_EQ(image.GetBlue(column, row), !inside ? 0 : hasMask ? 2 : 30);
                    EXPECT_TRUE(!hasAlpha || image.GetAlpha(column, row) == (inside ? 0 : 255));
                    EXPECT_EQ(before.GetBlue(column, row), inside ? 30 : 0) << "a copy changed";
                }
            }
        }
    }
}

}  // namespace

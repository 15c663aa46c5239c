#include "gui/images/sub_image.h"

#include <wx/image.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include <platen/gui_images.h>

namespace sub_image {
namespace {

/// Bytes that are compared at once, on every processor of the family.
using Bytes = unsigned char __attribute__((vector_size(16)));
using Equal = signed char __attribute__((vector_size(16)));

/// How many places are looked at together for the first pixels of the sub-image, the bytes of them,
/// and the pixels that have to be there, because bytes behind the places are read.
constexpr std::size_t placesAtOnce = 16;
constexpr std::size_t bytesAtOnce = placesAtOnce * 3;
constexpr std::size_t pixelsAtOnce = placesAtOnce + 2;

Bytes load(const unsigned char* from) {
    Bytes bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

/// The first pixel of the sub-image or, as it makes far fewer places look promising, the first two.
template <std::size_t Pixels>
class Start {
public:
    explicit Start(const unsigned char* pixels) {
        for (std::size_t byte = 0; byte < bytes_.size(); ++byte) {
            bytes_[byte] = Bytes{} + pixels[byte];
        }
    }

    /// Marks the places, from `row` on, that begin like this; false when there is none. What it
    /// says of bytes between two places means nothing.
    bool find(const unsigned char* row, std::array<Equal, 3>& places) const {
        for (std::size_t part = 0; part < places.size(); ++part, row += sizeof(Bytes)) {
            Equal equal = load(row) == bytes_[0];
            for (std::size_t byte = 1; byte < bytes_.size(); ++byte) {
                equal &= load(row + byte) == bytes_[byte];
            }
            places[part] = equal;
        }
        const Equal any = (places[0] & placeStarts(0)) | (places[1] & placeStarts(1)) |
                          (places[2] & placeStarts(2));
        std::array<std::uint64_t, 2> words{};
        std::memcpy(words.data(), &any, sizeof any);
        return (words[0] | words[1]) != 0;
    }

private:
    static Equal placeStarts(int part) {
        Equal starts{};
        for (int at = 0; at < 16; ++at) {
            starts[at] = (part * 16 + at) % 3 == 0 ? -1 : 0;
        }
        return starts;
    }

    std::array<Bytes, Pixels * 3> bytes_;
};

template <class Word>
Word difference(const unsigned char* left, const unsigned char* right) {
    Word a{};
    Word b{};
    std::memcpy(&a, left, sizeof a);
    std::memcpy(&b, right, sizeof b);
    return a ^ b;
}

/// Compares rows of `width` pixels and adds to `compared` how many of them it has found equal. Rows
/// mostly differ soon, which a call of the library's function would take too long for.
bool equalRows(const unsigned char* left, const unsigned char* right, std::size_t width,
               std::size_t& compared) {
    for (; width >= placesAtOnce; width -= placesAtOnce) {
        std::uint64_t different = 0;
        for (std::size_t at = 0; at < bytesAtOnce; at += sizeof different) {
            different |= difference<std::uint64_t>(left + at, right + at);
        }
        if (different != 0) {
            return false;
        }
        compared += placesAtOnce;
        left += bytesAtOnce;
        right += bytesAtOnce;
    }
    for (; width >= 4; width -= 4) {
        if ((difference<std::uint64_t>(left, right) |
             difference<std::uint32_t>(left + 8, right + 8)) != 0) {
            return false;
        }
        compared += 4;
        left += 12;
        right += 12;
    }
    for (; width > 0; --width) {
        if ((difference<std::uint16_t>(left, right) | (left[2] ^ right[2])) != 0) {
            return false;
        }
        ++compared;
        left += 3;
        right += 3;
    }
    return true;
}

class Comparer {
public:
    Comparer(const Picture& image, const Picture& sub) : image_(image), sub_(sub) {}

    std::size_t compared() const { return compared_; }

    bool equalAt(std::size_t x, std::size_t y) {
        for (std::size_t row = 0; row < sub_.height; ++row) {
            if (!equalRows(image_.at(x, y + row), sub_.at(0, row), sub_.width, compared_)) {
                return false;
            }
        }
        return true;
    }

private:
    const Picture& image_;
    const Picture& sub_;
    std::size_t compared_ = 0;
};

/// Looks at many places together for as many first pixels as said, or, with none, at each alone.
template <std::size_t Pixels>
Comparison compareAll(const Picture& image, const Picture& sub, std::size_t limit) {
    const std::size_t columns = image.width - sub.width + 1;
    const std::size_t rows = image.height - sub.height + 1;
    const Start<Pixels> start(sub.pixels);
    const unsigned char first = sub.pixels[0];
    const unsigned char second = sub.pixels[1];
    const unsigned char third = sub.pixels[2];
    Comparer comparer(image, sub);
    for (std::size_t y = 0; y < rows; ++y) {
        const std::size_t most =
            limit * (image.width * (image.height - y) + sub.width * sub.height);
        const unsigned char* const row = image.at(0, y);
        std::size_t x = 0;
        if constexpr (Pixels > 0) {
            for (; x + placesAtOnce <= columns && x + pixelsAtOnce <= image.width;
                 x += placesAtOnce) {
                std::array<Equal, 3> places{};
                if (!start.find(row + x * 3, places)) {
                    continue;
                }
                std::array<signed char, bytesAtOnce> hits{};
                std::memcpy(hits.data(), places.data(), sizeof hits);
                for (std::size_t place = 0; place < placesAtOnce; ++place) {
                    if (hits[place * 3] != 0 && comparer.equalAt(x + place, y)) {
                        return {Place{x + place, y}, y};
                    }
                }
                if (comparer.compared() > most) {
                    return {std::nullopt, y};
                }
            }
        }
        for (; x < columns; ++x) {
            const unsigned char* const pixel = row + x * 3;
            if (pixel[0] != first || pixel[1] != second || pixel[2] != third) {
                continue;
            }
            if (comparer.equalAt(x, y)) {
                return {Place{x, y}, y};
            }
            if (comparer.compared() > most) {
                return {std::nullopt, y};
            }
        }
    }
    return {std::nullopt, rows};
}

}  // namespace

Comparison findByComparing(const Picture& image, const Picture& sub, std::size_t limit) {
    if (image.width - sub.width + 1 < placesAtOnce) {
        return compareAll<0>(image, sub, limit);
    }
    return sub.width == 1 ? compareAll<1>(image, sub, limit) : compareAll<2>(image, sub, limit);
}

}  // namespace sub_image

namespace wut::ImageUtils {
namespace {

/// An invalid image has no pixels.
sub_image::Picture pictureOf(const wxImage& image) {
    if (!image.IsOk()) {
        return {};
    }
    return {image.GetData(), static_cast<std::size_t>(image.GetWidth()),
            static_cast<std::size_t>(image.GetHeight())};
}

/// Comparing a pixel takes less time than finding it different by hashes, so that a search that
/// changes over to them is not slower than one that compares to the end.
constexpr std::size_t comparisonsPerPixel = 8;

std::optional<sub_image::Place> find(const sub_image::Picture& image,
                                     const sub_image::Picture& sub) {
    if (sub.height > image.height) {
        return std::nullopt;
    }
    if (sub.width == 0 || sub.height == 0) {
        return sub_image::Place{};
    }
    if (sub.width > image.width) {
        return std::nullopt;
    }
    // A search that ends at its first place is over before anything is prepared for others.
    if (sub_image::Comparer(image, sub).equalAt(0, 0)) {
        return sub_image::Place{};
    }
    const sub_image::Comparison comparison =
        sub_image::findByComparing(image, sub, comparisonsPerPixel);
    if (comparison.found || comparison.nextRow + sub.height > image.height) {
        return comparison.found;
    }
    return sub_image::findByHashes(image, sub, comparison.nextRow);
}

}  // namespace

bool findSubImage(wxImage& image, const wxImage& sub, int& x, int& y) {
    const std::optional<sub_image::Place> place = find(pictureOf(image), pictureOf(sub));
    if (place) {
        x = static_cast<int>(place->x);
        y = static_cast<int>(place->y);
    }
    return place.has_value();
}

bool eraseSubImage(wxImage& image, const wxImage& sub, int& x, int& y) {
    if (!findSubImage(image, sub, x, y)) {
        return false;
    }
    // Found without a pixel: wxWidgets would take the empty rectangle for the whole image.
    if (!sub.IsOk()) {
        return true;
    }
    const wxRect place(wxPoint(x, y), sub.GetSize());
    if (image.HasAlpha()) {
        for (int row = place.GetTop(); row <= place.GetBottom(); ++row) {
            for (int column = place.GetLeft(); column <= place.GetRight(); ++column) {
                image.SetAlpha(column, row, wxIMAGE_ALPHA_TRANSPARENT);
            }
        }
    }
    if (image.HasMask()) {
        image.SetRGB(place, image.GetMaskRed(), image.GetMaskGreen(), image.GetMaskBlue());
    }
    return true;
}

}  // namespace wut::ImageUtils

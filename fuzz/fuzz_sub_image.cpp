// A picture in a picture: all searches find the place that plain comparing finds first.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "fuzz/oracle.h"
#include "gui/images/sub_image.h"

namespace {

using sub_image::Picture;
using sub_image::Place;

bool shows(const Picture& image, const Picture& sub, Place place) {
    for (std::size_t row = 0; row < sub.height; ++row) {
        if (!std::equal(sub.at(0, row), sub.at(0, row) + sub.width * 3,
                        image.at(place.x, place.y + row))) {
            return false;
        }
    }
    return true;
}

std::optional<Place> findPlainly(const Picture& image, const Picture& sub, std::size_t firstRow) {
    for (std::size_t y = firstRow; y + sub.height <= image.height; ++y) {
        for (std::size_t x = 0; x + sub.width <= image.width; ++x) {
            if (shows(image, sub, {x, y})) {
                return Place{x, y};
            }
        }
    }
    return std::nullopt;
}

/// Few colours, so that places are alike.
std::vector<unsigned char> pixelsOf(const std::uint8_t* data, std::size_t size, std::size_t from,
                                    std::size_t count) {
    std::vector<unsigned char> pixels(count * 3);
    for (std::size_t at = 0; at < pixels.size() && size > 0; ++at) {
        pixels[at] = data[(from + at / 8) % size] >> (at % 8) & 1U;
    }
    return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t header = 6;
    if (size <= header) {
        return 0;
    }
    const std::size_t width = 1 + data[0] % 40;
    const std::size_t height = 1 + data[1] % 24;
    const std::size_t subWidth = 1 + data[2] % std::min<std::size_t>(width, 20);
    const std::size_t subHeight = 1 + data[3] % std::min<std::size_t>(height, 12);
    const std::size_t rest = size - header;
    auto pixels = pixelsOf(data + header, rest, 0, width * height);
    auto wanted = pixelsOf(data + header, rest, data[4], subWidth * subHeight);
    const Picture image{pixels.data(), width, height};
    if (data[5] % 4 != 0) {
        // Cut out of the picture, perhaps with a pixel changed.
        const Place from{data[4] % (width - subWidth + 1), data[5] % (height - subHeight + 1)};
        for (std::size_t row = 0; row < subHeight; ++row) {
            std::copy_n(image.at(from.x, from.y + row), subWidth * 3,
                        wanted.begin() + static_cast<std::ptrdiff_t>(row * subWidth * 3));
        }
        if (data[5] % 4 == 1) {
            wanted[data[4] % wanted.size()] ^= 1U;
        }
    }
    const Picture sub{wanted.data(), subWidth, subHeight};
    const std::optional<Place> expected = findPlainly(image, sub, 0);
    for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{1} << 30U}) {
        const sub_image::Comparison compared = sub_image::findByComparing(image, sub, limit);
        if (compared.found || compared.nextRow + subHeight > height) {
            require(compared.found == expected);
        } else {
            require(!expected || expected->y >= compared.nextRow);
            require(sub_image::findByHashes(image, sub, compared.nextRow) == expected);
        }
    }
    require(sub_image::findByHashes(image, sub, 0) == expected);
    const std::size_t firstRow = data[4] % height;
    if (firstRow + subHeight <= height) {
        require(sub_image::findByHashes(image, sub, firstRow) == findPlainly(image, sub, firstRow));
    }
    return 0;
}

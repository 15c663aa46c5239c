/// The two ways in which a sub-image is searched for.
#pragma once

#include <cstddef>
#include <optional>

namespace sub_image {

/// Pixels of three bytes, row after row from the top, borrowed.
struct Picture {
    const unsigned char* pixels = nullptr;
    std::size_t width = 0;
    std::size_t height = 0;

    const unsigned char* at(std::size_t x, std::size_t y) const {
        return pixels + (y * width + x) * 3;
    }
};

struct Place {
    std::size_t x = 0;
    std::size_t y = 0;

    bool operator==(const Place&) const = default;
};

struct Comparison {
    std::optional<Place> found;
    /// The places in all rows above are known to differ.
    std::size_t nextRow = 0;
};

/// Compares place by place, which is the fastest way where places differ early, and gives up,
/// within a row, once it has found `limit` pixels equal for each pixel that the rest of the search
/// deals with.
///
/// `sub` has at least one pixel and is no larger than `image`, in neither direction; in both
/// searches.
Comparison findByComparing(const Picture& image, const Picture& sub, std::size_t limit);

/// Searches from row `firstRow` on by sums of pixels that are equal where pixels are, and compares
/// only where sums are. Takes the same time for every picture.
std::optional<Place> findByHashes(const Picture& image, const Picture& sub, std::size_t firstRow);

}  // namespace sub_image

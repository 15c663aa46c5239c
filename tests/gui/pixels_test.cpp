#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <platen/gui_images.h>
#include "gui/images/pixel_rows.h"
#include "tests/gui/screen.h"

namespace {

using namespace wut::ImageUtils;

using Buffer = std::vector<unsigned char>;

constexpr std::array formats{PF_RGB, PF_RGBA, PF_BGR, PF_BGRA};
constexpr unsigned char alpha = 200;

int bytesOf(PixelFormat format) { return format == PF_RGB || format == PF_BGR ? 3 : 4; }

/// The rule for one pixel, byte by byte.
void convertPixel(const unsigned char* source, PixelFormat from, unsigned char* target,
                  PixelFormat to) {
    const bool fromBlueFirst = from == PF_BGR || from == PF_BGRA;
    const bool toBlueFirst = to == PF_BGR || to == PF_BGRA;
    for (int byte = 0; byte < 3; ++byte) {
        target[byte] = source[fromBlueFirst == toBlueFirst ? byte : 2 - byte];
    }
    if (bytesOf(to) == 4) {
        target[3] = bytesOf(from) == 4 ? source[3] : alpha;
    }
}

Buffer filled(std::size_t size, unsigned seed) {
    Buffer bytes(size);
    for (std::size_t at = 0; at < size; ++at) {
        bytes[at] = static_cast<unsigned char>(at * 37 + at / 7 + seed);
    }
    return bytes;
}

// Sources end where their memory ends, so that the sanitizer sees what is read behind them.
TEST(PixelRows, EveryKernelConvertsTheRowAndNothingElse) {
    constexpr std::size_t guard = 64;
    for (const pixel_rows::Kernel& kernel : pixel_rows::kernels()) {
        for (const PixelFormat from : formats) {
            for (const PixelFormat to : formats) {
                const auto step = static_cast<std::size_t>(bytesOf(from));
                const auto toStep = static_cast<std::size_t>(bytesOf(to));
                for (std::size_t width = 0; width <= 70; ++width) {
                    const std::size_t shift = width * 7 % 16;
                    const std::size_t toShift = guard + width * 11 / 3 % 16;
                    const Buffer source = filled(shift + width * step, 5);
                    Buffer target = filled(toShift + width * toStep + guard, 9);
                    Buffer expected = target;
                    for (std::size_t x = 0; x < width; ++x) {
                        convertPixel(source.data() + shift + x * step, from,
                                     expected.data() + toShift + x * toStep, to);
                    }
                    kernel.at(from, to)(source.data() + shift, target.data() + toShift, width,
                                        alpha);
                    ASSERT_EQ(target, expected)
                        << kernel.name << ": " << from << " to " << to << ", " << width;
                }
            }
        }
    }
}

TEST(PixelRows, AreConvertedByWhatTheProcessorHas) {
    const std::string processor = readBytes(onWindows() ? "Z:/proc/cpuinfo" : "/proc/cpuinfo");
    const bool shuffles = processor.find(" ssse3 ") != std::string::npos;
    const pixel_rows::Kernel& used = pixel_rows::kernels().back();
    EXPECT_STREQ(used.name, shuffles ? "ssse3" : "portable");
    for (const PixelFormat from : formats) {
        for (const PixelFormat to : formats) {
            EXPECT_EQ(pixel_rows::converter(from, to), used.at(from, to));
            // What is only copied needs no instructions of its own.
            EXPECT_EQ(used.at(from, to) != pixel_rows::kernels().front().at(from, to),
                      shuffles && from != to);
        }
    }
}

/// A picture in memory: where its pixels are, said once for all tests.
struct Picture {
    PixelFormat format;
    VerticalDir direction;
    int width;
    int height;
    int stride;

    std::size_t step() const {
        return static_cast<std::size_t>(stride < 1 ? width * bytesOf(format) : stride);
    }
    std::size_t at(int x, int y) const {
        const int row = direction == VD_TopDown ? y : height - 1 - y;
        return static_cast<std::size_t>(row) * step() +
               static_cast<std::size_t>(x) * static_cast<std::size_t>(bytesOf(format));
    }
    /// Without padding behind the last row.
    std::size_t size() const { return at(width, direction == VD_TopDown ? height - 1 : 0); }
};

/// All layouts of a picture of that size.
std::vector<Picture> layouts(int width, int height) {
    std::vector<Picture> all;
    for (const PixelFormat format : formats) {
        for (const VerticalDir direction : {VD_BottomUp, VD_TopDown}) {
            for (const int stride : {0, width * bytesOf(format) + 5}) {
                all.push_back({format, direction, width, height, stride});
            }
        }
    }
    return all;
}

TEST(CopyPixels, CopiesTheRectangleAndNothingElse) {
    const struct {
        wxSize source, target;
        wxPoint at, to;
        wxSize size;
    } cases[] = {
        {{5, 3}, {5, 3}, {0, 0}, {0, 0}, {5, 3}},
        // Long rows are copied in pieces.
        {{600, 2}, {600, 2}, {0, 0}, {0, 0}, {600, 2}},
        {{9, 6}, {7, 8}, {5, 1}, {4, 3}, {3, 4}},
    };
    for (const auto& [sourceSize, targetSize, at, to, size] : cases) {
        const bool whole = sourceSize == targetSize;
        for (const Picture& source : layouts(sourceSize.x, sourceSize.y)) {
            for (const Picture& target : layouts(targetSize.x, targetSize.y)) {
                const Buffer from = filled(source.size(), 1);
                Buffer copied = filled(target.size(), 2);
                Buffer expected = copied;
                for (int y = 0; y < size.y; ++y) {
                    for (int x = 0; x < size.x; ++x) {
                        convertPixel(from.data() + source.at(at.x + x, at.y + y), source.format,
                                     expected.data() + target.at(to.x + x, to.y + y),
                                     target.format);
                    }
                }
                if (!whole) {
                    copySubimagePixels(sourceSize.x, sourceSize.y, from.data(), source.format,
                                       source.direction, targetSize.x, targetSize.y, copied.data(),
                                       target.format, target.direction, at.x, at.y, to.x, to.y,
                                       size.x, size.y, alpha, source.stride, target.stride);
                } else {
                    if (source.format == target.format && source.direction == target.direction &&
                        source.stride == target.stride) {
                        // One block of as many bytes as the pixels have, padding or not.
                        expected = filled(target.size(), 2);
                        std::copy_n(from.begin(), size.x * size.y * bytesOf(source.format),
                                    expected.begin());
                    }
                    copyPixels(size.x, size.y, from.data(), source.format, source.direction,
                               copied.data(), target.format, target.direction, alpha, source.stride,
                               target.stride);
                }
                ASSERT_EQ(copied, expected) << source.format << " to " << target.format;
            }
        }
    }
}

TEST(CopyPixels, CopiesNothingWithoutPixelsOrBuffers) {
    const Buffer source = filled(64, 1);
    Buffer target = filled(64, 2);
    const std::tuple<int, int, const unsigned char*, unsigned char*> cases[] = {
        {0, 2, source.data(), target.data()},
        {2, 0, source.data(), target.data()},
        {-2, -2, source.data(), target.data()},
        {2, 2, nullptr, target.data()},
        {2, 2, source.data(), nullptr}};
    for (const auto& [width, height, from, to] : cases) {
        for (const PixelFormat format : {PF_RGB, PF_RGBA}) {
            copyPixels(width, height, from, PF_RGB, VD_TopDown, to, format, VD_TopDown, alpha, 0,
                       0);
            copySubimagePixels(4, 4, from, PF_RGB, VD_TopDown, 4, 4, to, format, VD_TopDown, 0, 0,
                               0, 0, width, height, alpha, 0, 0);
        }
    }
    EXPECT_EQ(target, filled(64, 2));
}

}  // namespace

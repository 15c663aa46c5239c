#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>

#include "gui/pixel_rows.h"
#include "gui_images.h"

namespace wut::ImageUtils {
namespace {

/// The rows of one buffer in the order in which they are copied.
struct Rows {
    std::ptrdiff_t first;
    std::ptrdiff_t step;
};

std::ptrdiff_t strideOf(int stride, PixelFormat format, int width) {
    return stride < 1 ? static_cast<std::ptrdiff_t>(pixel_rows::bytesPerPixel(format)) * width
                      : stride;
}

/// The rows from the top of the picture down, starting with row `y`.
Rows fromTop(VerticalDir direction, int height, int y, std::ptrdiff_t stride) {
    if (direction == VD_TopDown) {
        return {y * stride, stride};
    }
    return {(std::ptrdiff_t{height} - y - 1) * stride, -stride};
}

/// A buffer from the first row that is copied on; `step` is negative when rows are copied upwards.
template <class Byte>
struct Side {
    Byte* row;
    std::ptrdiff_t step;
    std::size_t bytesPerPixel;
};

/// Asks the processor for memory that is about to be written.
void fetch(unsigned char* from, std::size_t size) {
    constexpr std::size_t cacheLine = 64;
    for (std::size_t at = 0; at < size; at += cacheLine) {
        __builtin_prefetch(from + at, 1, 2);
    }
}

void convertRows(pixel_rows::Converter convert, Side<const unsigned char> source,
                 Side<unsigned char> target, std::size_t width, std::ptrdiff_t height,
                 unsigned char alpha) {
    if (source.step < 0 && target.step < 0) {
        source = {source.row + (height - 1) * source.step, -source.step, source.bytesPerPixel};
        target = {target.row + (height - 1) * target.step, -target.step, target.bytesPerPixel};
    }
    // Processors foresee memory that is used upwards. Of rows in the other direction, the next one
    // is fetched while the one before it is converted.
    const bool foreseen = (source.step < 0) == (target.step < 0);
    const std::size_t pixelsAtOnce = foreseen ? width : 256;
    for (std::ptrdiff_t row = 0; row < height; ++row) {
        for (std::size_t x = 0; x < width; x += pixelsAtOnce) {
            const std::size_t pixels = std::min(pixelsAtOnce, width - x);
            const unsigned char* const from =
                source.row + row * source.step + x * source.bytesPerPixel;
            unsigned char* const to = target.row + row * target.step + x * target.bytesPerPixel;
            if (!foreseen && row + 1 < height) {
                fetch(to + target.step, pixels * target.bytesPerPixel);
            }
            convert(from, to, pixels, alpha);
        }
    }
}

[[maybe_unused]] bool liesInside(int width, int height, int x, int y, int pictureWidth,
                                 int pictureHeight) {
    return x >= 0 && y >= 0 && std::ptrdiff_t{x} + width <= pictureWidth &&
           std::ptrdiff_t{y} + height <= pictureHeight;
}

}  // namespace

void copyPixels(int width, int height, const unsigned char* src, PixelFormat srcFormat,
                VerticalDir srcDir, unsigned char* dst, PixelFormat dstFormat, VerticalDir dstDir,
                unsigned char alpha, int srcStride, int dstStride) {
    if (src == nullptr || dst == nullptr || width < 1 || height < 1) {
        return;
    }
    const auto columns = static_cast<std::size_t>(width);
    const std::ptrdiff_t srcStep = strideOf(srcStride, srcFormat, width);
    const std::ptrdiff_t dstStep = strideOf(dstStride, dstFormat, width);
    if (srcFormat == dstFormat && srcDir == dstDir && srcStep == dstStep) {
        std::memcpy(
            dst, src,
            pixel_rows::bytesPerPixel(srcFormat) * columns * static_cast<std::size_t>(height));
        return;
    }
    const Rows target = srcDir == dstDir ? Rows{0, dstStep}
                                         : Rows{(std::ptrdiff_t{height} - 1) * dstStep, -dstStep};
    convertRows(pixel_rows::converter(srcFormat, dstFormat),
                {src, srcStep, pixel_rows::bytesPerPixel(srcFormat)},
                {dst + target.first, target.step, pixel_rows::bytesPerPixel(dstFormat)}, columns,
                height, alpha);
}

void copySubimagePixels(int srcWidth, int srcHeight, const unsigned char* src,
                        PixelFormat srcFormat, VerticalDir srcDir, int dstWidth, int dstHeight,
                        unsigned char* dst, PixelFormat dstFormat, VerticalDir dstDir, int srcX,
                        int srcY, int dstX, int dstY, int width, int height, unsigned char alpha,
                        int srcStride, int dstStride) {
    if (src == nullptr || dst == nullptr || width < 1 || height < 1) {
        return;
    }
    assert(liesInside(width, height, srcX, srcY, srcWidth, srcHeight));
    assert(liesInside(width, height, dstX, dstY, dstWidth, dstHeight));
    const Rows source = fromTop(srcDir, srcHeight, srcY, strideOf(srcStride, srcFormat, srcWidth));
    const Rows target = fromTop(dstDir, dstHeight, dstY, strideOf(dstStride, dstFormat, dstWidth));
    const std::size_t srcBytes = pixel_rows::bytesPerPixel(srcFormat);
    const std::size_t dstBytes = pixel_rows::bytesPerPixel(dstFormat);
    convertRows(
        pixel_rows::converter(srcFormat, dstFormat),
        {src + source.first + srcBytes * static_cast<std::size_t>(srcX), source.step, srcBytes},
        {dst + target.first + dstBytes * static_cast<std::size_t>(dstX), target.step, dstBytes},
        static_cast<std::size_t>(width), height, alpha);
}

}  // namespace wut::ImageUtils

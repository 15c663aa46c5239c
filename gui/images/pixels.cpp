#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>

#include <platen/gui_images.h>
#include "gui/images/pixel_rows.h"

namespace wut::ImageUtils {
namespace {

/// The rectangle of one buffer, from the row that is copied first; `step` is negative when the next
/// one stands before it.
template <class Byte>
struct Side {
    Byte* row;
    std::ptrdiff_t step;
    std::size_t bytesPerPixel;
};

std::ptrdiff_t strideOf(int stride, PixelFormat format, int width) {
    return stride < 1 ? static_cast<std::ptrdiff_t>(pixel_rows::bytesPerPixel(format)) * width
                      : stride;
}

/// From the pixel at (`x`, `y`) of a picture downwards.
template <class Byte>
Side<Byte> sideOf(Byte* buffer, PixelFormat format, VerticalDir direction, int height, int x, int y,
                  std::ptrdiff_t stride) {
    const std::size_t bytes = pixel_rows::bytesPerPixel(format);
    const bool down = direction == VD_TopDown;
    const std::ptrdiff_t row = down ? y : std::ptrdiff_t{height} - y - 1;
    return {buffer + row * stride + static_cast<std::ptrdiff_t>(bytes) * x, down ? stride : -stride,
            bytes};
}

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
    if (source.step < 0) {
        source.row += (height - 1) * source.step;
        source.step = -source.step;
        target.row += (height - 1) * target.step;
        target.step = -target.step;
    }
    // Processors foresee memory that is used upwards. Where the target is written the other way,
    // its next row is fetched while the one before it is converted.
    const bool foreseen = target.step > 0;
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
    const std::ptrdiff_t srcStep = strideOf(srcStride, srcFormat, width);
    const std::ptrdiff_t dstStep = strideOf(dstStride, dstFormat, width);
    if (srcFormat == dstFormat && srcDir == dstDir && srcStep == dstStep) {
        std::memcpy(dst, src,
                    pixel_rows::bytesPerPixel(srcFormat) * static_cast<std::size_t>(width) *
                        static_cast<std::size_t>(height));
        return;
    }
    copySubimagePixels(width, height, src, srcFormat, srcDir, width, height, dst, dstFormat, dstDir,
                       0, 0, 0, 0, width, height, alpha, srcStride, dstStride);
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
    convertRows(pixel_rows::converter(srcFormat, dstFormat),
                sideOf(src, srcFormat, srcDir, srcHeight, srcX, srcY,
                       strideOf(srcStride, srcFormat, srcWidth)),
                sideOf(dst, dstFormat, dstDir, dstHeight, dstX, dstY,
                       strideOf(dstStride, dstFormat, dstWidth)),
                static_cast<std::size_t>(width), height, alpha);
}

}  // namespace wut::ImageUtils

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
    const pixel_rows::Converter convert = pixel_rows::converter(srcFormat, dstFormat);
    const Rows target = srcDir == dstDir ? Rows{0, dstStep}
                                         : Rows{(std::ptrdiff_t{height} - 1) * dstStep, -dstStep};
    for (std::ptrdiff_t row = 0; row < height; ++row) {
        convert(src + row * srcStep, dst + target.first + row * target.step, columns, alpha);
    }
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
    const auto columns = static_cast<std::size_t>(width);
    const Rows source = fromTop(srcDir, srcHeight, srcY, strideOf(srcStride, srcFormat, srcWidth));
    const Rows target = fromTop(dstDir, dstHeight, dstY, strideOf(dstStride, dstFormat, dstWidth));
    src += source.first + static_cast<std::ptrdiff_t>(pixel_rows::bytesPerPixel(srcFormat)) * srcX;
    dst += target.first + static_cast<std::ptrdiff_t>(pixel_rows::bytesPerPixel(dstFormat)) * dstX;
    const pixel_rows::Converter convert = pixel_rows::converter(srcFormat, dstFormat);
    for (std::ptrdiff_t row = 0; row < height; ++row) {
        convert(src + row * source.step, dst + row * target.step, columns, alpha);
    }
}

}  // namespace wut::ImageUtils

/// Converting rows of pixels between byte layouts.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include <platen/gui_images.h>

namespace pixel_rows {

constexpr std::size_t bytesPerPixel(wut::ImageUtils::PixelFormat format) {
    return format % 2 == 1 ? 4 : 3;
}

constexpr bool swapped(wut::ImageUtils::PixelFormat from, wut::ImageUtils::PixelFormat to) {
    return (from > wut::ImageUtils::PF_RGBA) != (to > wut::ImageUtils::PF_RGBA);
}

/// Converts `width` pixels and touches no byte before or behind them, in neither row. The rows do
/// not overlap. `alpha` is for pixels that get a fourth byte.
using Converter = void (*)(const unsigned char* source, unsigned char* target, std::size_t width,
                           unsigned char alpha);

/// A set of converters that all need the same of the processor.
class Kernel {
public:
    /// What it needs of the processor.
    const char* name = "portable";

    Converter& at(std::size_t fromBytes, std::size_t toBytes, bool swap) {
        return converters_[index(fromBytes, toBytes, swap)];
    }
    Converter at(wut::ImageUtils::PixelFormat from, wut::ImageUtils::PixelFormat to) const {
        return converters_[index(bytesPerPixel(from), bytesPerPixel(to), swapped(from, to))];
    }

private:
    static constexpr std::size_t index(std::size_t fromBytes, std::size_t toBytes, bool swap) {
        return (fromBytes - 3) * 4 + (toBytes - 3) * 2 + (swap ? 1 : 0);
    }

    std::array<Converter, 8> converters_{};
};

/// The kernels that this processor runs, the fastest one last. There is at least the portable one.
std::span<const Kernel> kernels();

/// Of the fastest kernel.
inline Converter converter(wut::ImageUtils::PixelFormat from, wut::ImageUtils::PixelFormat to) {
    return kernels().back().at(from, to);
}

/// Converts pixel by pixel; the other kernels end their rows with it.
template <std::size_t FromBytes, std::size_t ToBytes, bool Swap>
inline void convertPlain(const unsigned char* source, unsigned char* target, std::size_t width,
                         unsigned char alpha) {
    for (std::size_t pixel = 0; pixel < width; ++pixel) {
        target[0] = source[Swap ? 2 : 0];
        target[1] = source[1];
        target[2] = source[Swap ? 0 : 2];
        if constexpr (ToBytes == 4) {
            target[3] = FromBytes == 4 ? source[3] : alpha;
        }
        source += FromBytes;
        target += ToBytes;
    }
}

/// Replaces the converters of `kernel` that instructions of this processor's family make faster;
/// false when it has no such instructions.
bool useProcessor(Kernel& kernel);

}  // namespace pixel_rows

#include "gui/images/pixel_rows.h"

#include <algorithm>

namespace pixel_rows {
namespace {

template <std::size_t Bytes>
void copyRow(const unsigned char* source, unsigned char* target, std::size_t width, unsigned char) {
    std::copy_n(source, width * Bytes, target);
}

Kernel portable() {
    Kernel kernel;
    kernel.at(3, 3, false) = copyRow<3>;
    kernel.at(3, 3, true) = convertPlain<3, 3, true>;
    kernel.at(3, 4, false) = convertPlain<3, 4, false>;
    kernel.at(3, 4, true) = convertPlain<3, 4, true>;
    kernel.at(4, 3, false) = convertPlain<4, 3, false>;
    kernel.at(4, 3, true) = convertPlain<4, 3, true>;
    kernel.at(4, 4, false) = copyRow<4>;
    kernel.at(4, 4, true) = convertPlain<4, 4, true>;
    return kernel;
}

struct Known {
    Known() {
        kernels.fill(portable());
        count = useProcessor(kernels.back()) ? 2 : 1;
    }

    std::array<Kernel, 2> kernels;
    std::size_t count = 0;
};

}  // namespace

std::span<const Kernel> kernels() {
    static const Known known;
    return std::span(known.kernels).first(known.count);
}

}  // namespace pixel_rows

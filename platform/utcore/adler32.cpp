#include "platform/utcore/adler32.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ut {

namespace {

constexpr std::uint32_t base = 65521;
/// Bytes that are summed in lanes of their own, which the compiler makes vectors of.
constexpr std::size_t lanes = 32;
constexpr std::uint32_t lanes32 = lanes;
/// Rows after which every lane still fits 16 bits: 255 * 22 * 23 / 2 is below 65536.
constexpr std::size_t mostRows = 22;

}  // namespace

std::uint32_t adler32(std::uint32_t start, std::string_view bytes) {
    std::uint32_t low = start & 0xFFFFU;
    std::uint32_t high = start >> 16U;
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    while (left >= lanes) {
        // Row by row: `sums` adds up each column, `earlier` what the columns held before each row.
        std::uint16_t sums[lanes] = {};
        std::uint16_t earlier[lanes] = {};
        const std::size_t rows = std::min(left / lanes, mostRows);
        for (std::size_t row = 0; row < rows; ++row, at += lanes) {
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                earlier[lane] = static_cast<std::uint16_t>(earlier[lane] + sums[lane]);
                sums[lane] = static_cast<std::uint16_t>(sums[lane] + at[lane]);
            }
        }
        const auto count = static_cast<std::uint32_t>(rows * lanes);
        high += count * low;
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            high +=
                earlier[lane] * lanes32 + sums[lane] * (lanes32 - static_cast<std::uint32_t>(lane));
            low += sums[lane];
        }
        low %= base;
        high %= base;
        left -= count;
    }
    for (; left > 0; --left) {
        low += *at++;
        high += low;
    }
    return ((high % base) << 16U) | (low % base);
}

}  // namespace ut

#include <platen/style_words.h>

#include <array>
#include <charconv>
#include <cstddef>

#include <platen/plotstyle.h>
#include "platform/utcore/digits.h"

namespace platen {
namespace {

std::string hexadecimal(std::uint32_t value) {
    std::array<char, 8> digits{};
    const std::to_chars_result end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return {digits.data(), end.ptr};
}

}  // namespace

std::string numberInWords(double value) { return ut::shortestDigits(value); }

std::string colorInWords(std::int32_t packed) {
    constexpr std::uint32_t byIndex = 0xC3;
    constexpr std::uint32_t byValue = 0xC2;
    constexpr std::size_t colorDigits = 6;
    const auto bits = static_cast<std::uint32_t>(packed);
    const std::uint32_t low = bits & 0xFFFFFFU;
    if (packed == -1) {
        return "object";
    }
    if (bits >> 24U == byIndex && low <= CAciTable::count) {
        return "index " + std::to_string(low);
    }
    // A colour of the palette may stand as its red, green and blue in place of its index.
    if (bits >> 24U == byValue || bits >> 24U == byIndex) {
        const std::string digits = hexadecimal(low);
        return '#' + std::string(colorDigits - digits.size(), '0') + digits;
    }
    return "0x" + hexadecimal(bits);
}

std::string colorPolicyInWords(std::int32_t policy) {
    constexpr std::uint32_t dither = 1;
    constexpr std::uint32_t grayscale = 2;
    constexpr std::uint32_t knownBits = 7;
    const auto bits = static_cast<std::uint32_t>(policy);
    std::string words = (bits & dither) != 0 ? "dithered" : "not dithered";
    words += (bits & grayscale) != 0 ? ", grayscale" : "";
    const std::uint32_t unknown = bits & ~knownBits;
    words += unknown != 0 ? ", policy bits 0x" + hexadecimal(unknown) : "";
    return words;
}

std::string rangesInWords(const std::vector<int>& numbers) {
    std::string ranges;
    for (std::size_t first = 0; first < numbers.size();) {
        std::size_t last = first;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
            ++last;
        }
        ranges += (ranges.empty() ? "" : ", ") + std::to_string(numbers[first]);
        if (last > first) {
            ranges += "-" + std::to_string(numbers[last]);
        }
        first = last + 1;
    }
    return ranges;
}

}  // namespace platen

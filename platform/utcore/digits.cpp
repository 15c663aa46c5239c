#include "platform/utcore/digits.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <limits>

namespace ut {

std::string fixedDigits(double value, int digits) {
    // A sign, the point and the longest integer part.
    constexpr std::size_t longest = std::numeric_limits<double>::max_exponent10 + 3;
    char usual[longest + 32];
    std::string unusual;
    char* characters = usual;
    std::size_t room = std::size(usual);
    if (digits > 32) {
        room = longest + static_cast<std::size_t>(digits);
        unusual.resize(room);
        characters = unusual.data();
    }
    const std::to_chars_result result =
        std::to_chars(characters, characters + room, value, std::chars_format::fixed, digits);
    return {characters, result.ptr};
}

std::string shortestDigits(double value) {
    std::array<char, 32> digits{};
    const std::to_chars_result end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), end.ptr};
}

}  // namespace ut

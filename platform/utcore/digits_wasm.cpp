#include "platform/utcore/digits.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>

// What std::to_chars needs for doubles are tables of 100 KB, a quarter of the module as it is sent.
// The C library's printf needs none, and rounds as exactly.

namespace ut {

namespace {

std::string printed(const char* format, int digits, double value) {
    const int size = std::snprintf(nullptr, 0, format, digits, value);
    std::string text(static_cast<std::size_t>(size), '\0');
    std::snprintf(text.data(), text.size() + 1, format, digits, value);
    return text;
}

bool means(const std::string& text, double value) {
    return std::strtod(text.c_str(), nullptr) == value;
}

/// One more in the last digit of "d.ddde+dd". Empty when that carries into another place.
std::string nextDigit(std::string text) {
    const std::size_t last = text.find('e') - 1;
    if (text[last] == '9') {
        return {};
    }
    ++text[last];
    return text;
}

/// The fewest digits that mean the value, as "d.ddde+dd".
std::string scientificDigits(double value) {
    constexpr int enough = 16;
    for (int digits = 0; digits < enough; ++digits) {
        std::string text = printed("%.*e", digits, value);
        if (means(text, value)) {
            return text;
        }
        // Below a power of two, doubles are twice as dense: what is farther above may still mean
        // it.
        text = nextDigit(std::move(text));
        if (!text.empty() && means(text, value)) {
            return text;
        }
    }
    return printed("%.*e", enough, value);
}

}  // namespace

std::string fixedDigits(double value, int digits) { return printed("%.*f", digits, value); }

std::string shortestDigits(double value) {
    if (!std::isfinite(value)) {
        return printed("%.*f", 0, value);
    }
    const std::string scientific = scientificDigits(value);
    const std::size_t mark = scientific.find('e');
    const int exponent = std::atoi(scientific.c_str() + mark + 1);
    const bool hasPoint = scientific.find('.') != std::string::npos;
    const std::size_t sign = scientific.front() == '-' ? 1 : 0;
    const int digits = static_cast<int>(mark - sign) - (hasPoint ? 1 : 0);
    const int behind = digits - 1 > exponent ? digits - 1 - exponent : 0;
    std::string fixed = fixedDigits(value, behind);
    return fixed.size() <= scientific.size() ? fixed : scientific;
}

}  // namespace ut

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <type_traits>

#include <platen/utcore.h>
#include "platform/utcore/ascii.h"
#include "platform/utcore/digits.h"

namespace ut {

namespace {

template <class Char>
using Text = std::basic_string_view<Char>;

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

bool isSpaceIn(Text<char>, char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}
bool isSpaceIn(Text<wchar_t>, wchar_t character) { return isSpace(character); }

void narrowInto(Text<char> text, char* characters) {
    std::copy(text.begin(), text.end(), characters);
}
void narrowInto(Text<wchar_t> text, char* characters) { narrowAscii(text, characters); }

/// The characters that a number can have after its sign, hexadecimal ones included.
bool isNumeric(wchar_t character) {
    return isDigit(character) || (character >= L'a' && character <= L'f') ||
           (character >= L'A' && character <= L'F') || character == L'.' || character == L'+' ||
           character == L'-' || character == L'x' || character == L'X' || character == L'p' ||
           character == L'P';
}

/// Removes leading white space and one sign. True when the sign is a minus.
template <class Char>
bool takeSign(Text<Char>& text) {
    std::size_t at = 0;
    while (at < text.size() && isSpaceIn(text, text[at])) {
        ++at;
    }
    const bool negative = at < text.size() && text[at] == Char('-');
    if (negative || (at < text.size() && text[at] == Char('+'))) {
        ++at;
    }
    text.remove_prefix(at);
    return negative;
}

/// Tells which end of the range a number left that `std::from_chars` calls out of range. True when
/// it is nearer to 0 than any double, by its first digit's place and its exponent.
bool isTiny(std::string_view number, bool hexadecimal) {
    const std::size_t mark = number.find_first_of(hexadecimal ? "pP" : "eE");
    const std::string_view digits = number.substr(0, mark);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_not_of("0.");
    auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    if (hexadecimal) {
        place *= 4;
    }
    if (mark == std::string_view::npos) {
        return place < 0;
    }
    number.remove_prefix(mark + 1);
    if (number.starts_with('+')) {
        number.remove_prefix(1);
    }
    std::int64_t exponent = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), exponent).ec ==
        std::errc::result_out_of_range) {
        return number.front() == '-';
    }
    return place + exponent < 0;
}

template <class Real>
std::errc convert(std::string_view number, std::chars_format format, Real& value) {
    const std::from_chars_result result =
        std::from_chars(number.data(), number.data() + number.size(), value, format);
    if (result.ec == std::errc::result_out_of_range) {
        number = number.substr(0, static_cast<std::size_t>(result.ptr - number.data()));
        if (isTiny(number, format == std::chars_format::hex)) {
            value = 0;
            return {};
        }
    }
    return result.ec;
}

template <class Char>
bool scanIntIn(Text<Char> text, std::int32_t& value) {
    const bool negative = takeSign(text);
    if (text.empty() || !isDigit(text.front())) {
        return false;
    }
    const std::uint64_t limit = negative ? 0x80000000u : 0xFFFFFFFFu;
    std::uint64_t magnitude = 0;
    for (const Char character : text) {
        if (!isDigit(character)) {
            break;
        }
        magnitude = magnitude * 10 + static_cast<std::uint64_t>(character - Char('0'));
        if (magnitude > limit) {
            return false;
        }
    }
    const auto bits = static_cast<std::uint32_t>(magnitude);
    value = static_cast<std::int32_t>(negative ? 0u - bits : bits);
    return true;
}

/// Converts digits with or without a point, when there are so few that both the digits and the
/// power of ten are exact doubles: then their quotient is the nearest double. False for any other
/// number, and for whatever follows one.
template <class Char>
bool convertShort(Text<Char> text, double& value) {
    constexpr std::array<double, 16> powers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (text.size() > powers.size()) {
        return false;
    }
    std::int64_t digits = 0;
    std::size_t point = text.size();
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isDigit(text[at])) {
            digits = digits * 10 + (text[at] - Char('0'));
        } else if (text[at] == Char('.') && point == text.size()) {
            point = at;
        } else {
            return false;
        }
    }
    if (point == text.size()) {
        // Without a point there can be one digit too many.
        if (text.size() == powers.size()) {
            return false;
        }
        value = static_cast<double>(digits);
        return true;
    }
    value = static_cast<double>(digits) / powers[text.size() - 1 - point];
    return text.size() > 1;
}

template <class Char, class Real>
bool scanRealIn(Text<Char> text, Real& value) {
    const bool negative = takeSign(text);
    Real magnitude = 0;
    if constexpr (std::is_same_v<Real, double>) {
        if (!text.empty() && convertShort(text, magnitude)) {
            value = negative ? -magnitude : magnitude;
            return true;
        }
    }
    // This also keeps out what only the conversion below knows: "inf", "nan" and a second sign.
    if (text.empty() || !(isDigit(text.front()) || text.front() == Char('.'))) {
        return false;
    }
    std::size_t length = 0;
    while (length < text.size() && isNumeric(text[length])) {
        ++length;
    }
    text = text.substr(0, length);

    char usual[64];
    std::string unusual;
    char* characters = usual;
    if (length > std::size(usual)) {
        unusual.resize(length);
        characters = unusual.data();
    }
    narrowInto(text, characters);
    const std::string_view number(characters, length);

    std::errc error{};
    if (number.starts_with("0x") || number.starts_with("0X")) {
        const std::string_view digits = number.substr(2);
        error = digits.starts_with('-') ? std::errc::invalid_argument
                                        : convert(digits, std::chars_format::hex, magnitude);
        if (error == std::errc::invalid_argument) {
            // The number ends before the "x": it is 0.
            error = {};
        }
    } else {
        error = convert(number, std::chars_format::general, magnitude);
    }
    if (error != std::errc()) {
        return false;
    }
    value = negative ? -magnitude : magnitude;
    return true;
}

}  // namespace

bool scanInt(std::wstring_view text, std::int32_t& value) { return scanIntIn(text, value); }
bool scanAnyInt(std::string_view text, std::int32_t& value) { return scanIntIn(text, value); }
bool scanDouble(std::wstring_view text, double& value) { return scanRealIn(text, value); }
bool scanDouble(std::string_view text, double& value) { return scanRealIn(text, value); }
bool scanFloat(std::wstring_view text, float& value) { return scanRealIn(text, value); }

std::string formatFixedAscii(double value, int precision) {
    if (std::isnan(value)) {
        return "nan";
    }
    return fixedDigits(value, precision < 0 ? 6 : precision);
}

std::string formatRounded(double value, int precision) {
    std::string digits = formatFixedAscii(value, precision);
    if (digits.find('.') != std::string::npos) {
        digits.erase(digits.find_last_not_of('0') + 1);
    }
    if (digits.ends_with('.')) {
        digits.pop_back();
    }
    return digits;
}

std::wstring formatFixed(double value, int precision) {
    const std::string text = formatFixedAscii(value, precision);
    return {text.begin(), text.end()};
}

}  // namespace ut

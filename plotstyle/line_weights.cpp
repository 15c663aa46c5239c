#include <cerrno>
#include <cwchar>
#include <limits>
#include <optional>

#include <platen/plotstyle.h>

namespace {

/// The number that the user typed, with the decimal point of the C library's locale; empty when
/// there is more or less in `text` than a number, or one beyond what a double holds.
std::optional<double> parseTyped(const wchar_t* text) {
    if (text == nullptr) {
        return std::nullopt;
    }
    wchar_t* end = nullptr;
    errno = 0;
    const double number = std::wcstod(text, &end);
    const bool whole = end != text && *end == L'\0' && errno != ERANGE;
    return whole ? std::optional(number) : std::nullopt;
}

}  // namespace

bool CCustomLineweightTable::checkLineWeightRange(double& value, bool inches) {
    constexpr double epsilon = std::numeric_limits<float>::epsilon();
    constexpr double maximumMillimetres = 200.0;
    constexpr double maximumInches = 7.874015748031496;

    if (value < epsilon) {
        const bool inside = value >= 0.0;
        value = 0.0;
        return inside;
    }
    const double maximum = inches ? maximumInches : maximumMillimetres;
    if (value < maximum + epsilon) {
        return true;
    }
    value = maximum;
    return false;
}

bool CCustomLineweightTable::checkLineWeightRange(double& value, const wchar_t* text, bool inches) {
    const std::optional<double> typed = parseTyped(text);
    if (!typed) {
        return false;
    }
    value = *typed;
    return checkLineWeightRange(value, inches);
}

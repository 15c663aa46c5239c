#include <algorithm>
#include <cstddef>

#include <platen/edit_items.h>
#include <platen/utcore.h>

namespace platen {
namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Takes the digits at the front of `text` and returns how many they were.
std::size_t takeDigits(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count;
}

bool take(std::string_view& text, std::string_view anyOf) {
    const bool there = !text.empty() && anyOf.find(text.front()) != std::string_view::npos;
    text.remove_prefix(there ? 1 : 0);
    return there;
}

bool isNumber(std::string_view text) {
    take(text, "+-");
    std::size_t digits = takeDigits(text);
    if (take(text, ".")) {
        digits += takeDigits(text);
    }
    bool exponentHolds = true;
    if (take(text, "eE")) {
        take(text, "+-");
        exponentHolds = takeDigits(text) > 0;
    }
    return digits > 0 && exponentHolds && text.empty();
}

}  // namespace

std::optional<double> wholeNumber(std::string_view text) {
    double value = 0;
    if (!isNumber(text) || !ut::scanDouble(text, value)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace platen

#include <algorithm>
#include <cstdint>

#include <platen/utcore.h>
#include "platform/utcore/utf.h"

namespace ut {

namespace {

std::size_t unitsOf(wchar_t character) { return utf16Units(static_cast<char32_t>(character)); }

/// Hands out the UTF-16 units of a text one by one.
class Utf16Reader {
public:
    explicit Utf16Reader(std::wstring_view text) : text_(text) {}

    /// -1 at the end.
    std::int32_t next() {
        if (low_ != 0) {
            const char16_t low = low_;
            low_ = 0;
            return low;
        }
        if (text_.empty()) {
            return -1;
        }
        const char32_t character = takeCharacter(text_);
        if (utf16Units(character) == 1) {
            return static_cast<std::int32_t>(character);
        }
        low_ = lowSurrogate(character);
        return highSurrogate(character);
    }

private:
    std::wstring_view text_;
    char16_t low_ = 0;
};

}  // namespace

std::size_t utf16Length(std::wstring_view text) {
    if constexpr (sizeof(wchar_t) == 2) {
        return text.size();
    }
    std::size_t units = 0;
    for (const wchar_t character : text) {
        units += unitsOf(character);
    }
    return units;
}

std::wstring_view utf16Prefix(std::wstring_view text, std::size_t units) {
    std::size_t count = 0;
    if constexpr (sizeof(wchar_t) == 2) {
        count = std::min(units, text.size());
    } else if (text.size() <= units / 2) {
        return text;
    } else {
        while (count < text.size() && unitsOf(text[count]) <= units) {
            units -= unitsOf(text[count]);
            ++count;
        }
    }
    // Half a pair is no beginning of a text that both systems could have.
    if (count > 0 && count < text.size() &&
        isHighSurrogate(static_cast<char32_t>(text[count - 1])) &&
        isLowSurrogate(static_cast<char32_t>(text[count]))) {
        --count;
    }
    return text.substr(0, count);
}

int compareOrdinal(std::wstring_view left, std::wstring_view right) {
    const auto [leftAt, rightAt] =
        std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    Utf16Reader leftUnits(left.substr(static_cast<std::size_t>(leftAt - left.begin())));
    Utf16Reader rightUnits(right.substr(static_cast<std::size_t>(rightAt - right.begin())));
    for (;;) {
        const std::int32_t leftUnit = leftUnits.next();
        const std::int32_t rightUnit = rightUnits.next();
        if (leftUnit != rightUnit) {
            return leftUnit < rightUnit ? -1 : 1;
        }
        if (leftUnit < 0) {
            return 0;
        }
    }
}

}  // namespace ut

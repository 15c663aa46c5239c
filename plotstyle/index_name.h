/// Numbers as the names of items: styles, colour entries and line weights are all named that way.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string_view>

namespace plot_style {

/// Takes the number that `name` spells; false when it is not below `count`. Digits only, no sign
/// and no space.
inline bool parseIndex(std::wstring_view name, std::size_t count, std::size_t& index) {
    index = 0;
    for (const wchar_t character : name) {
        if (character < L'0' || character > L'9') {
            return false;
        }
        // No digit makes a number smaller, so one that is too large already stays so.
        if (index < count) {
            index = index * 10 + static_cast<std::size_t>(character - L'0');
        }
    }
    return !name.empty() && index < count;
}

/// A number in decimal, without an allocation.
class IndexName {
public:
    explicit IndexName(int number) {
        std::array<char, size> digits{};
        const char* end = std::to_chars(digits.data(), digits.data() + size, number).ptr;
        length_ = static_cast<std::size_t>(end - digits.data());
        std::copy_n(digits.begin(), length_, text_.begin());
    }

    std::wstring_view view() const { return {text_.data(), length_}; }

private:
    /// The digits of the largest number, one more that `digits10` leaves out, and a sign.
    static constexpr std::size_t size = std::numeric_limits<int>::digits10 + 2;

    std::array<wchar_t, size> text_{};
    std::size_t length_;
};

}  // namespace plot_style

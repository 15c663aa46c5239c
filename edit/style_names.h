/// Names of plot styles.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

#include <platen/utcore.h>

namespace platen {

/// A table with more gets no others: names are looked for one by one.
inline constexpr std::size_t mostStyles = 16384;

/// What `CPlotStyle::updateName` makes of it.
inline std::wstring innerName(std::wstring name) {
    std::ranges::replace_if(
        name, [](wchar_t character) { return ut::isSpace(character); }, L'_');
    return name;
}

/// The same for names that differ in case alone.
inline std::wstring folded(std::wstring name) {
    std::ranges::transform(name, name.begin(), ut::toLower);
    return name;
}

/// Not blank, and in one line.
inline bool isStyleName(const std::wstring& name) {
    const auto isControl = [](wchar_t unit) {
        return (unit < L' ' && unit != L'\t') || unit == L'\x7F';
    };
    return std::ranges::none_of(name, isControl) && !std::ranges::all_of(name, ut::isSpace);
}

}  // namespace platen

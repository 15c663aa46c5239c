/// What changed, in words. All texts are UTF-8 without control characters.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include <platen/compare.h>

namespace platen {

std::string printableUtf8(std::wstring_view text);

/// A value as a line shows it: shortened when it is long.
std::string valueInWords(const PiaItem& item);

/// Both sides of a difference; empty for a side that is not there.
struct SidesInWords {
    std::string before;
    std::string after;
};
/// `ofStyle`: the difference is that of a key of a style, whose numbers have meanings.
SidesInWords sidesInWords(const Difference& difference, bool ofStyle);

/// True for a difference in a style.
bool isOfStyle(const Difference& difference);

/// "lineweight 0.25 mm -> 0.35 mm", or "removed 7" when `label` is empty.
std::string changeInWords(const std::string& label, const Difference& difference, bool ofStyle);

/// What a key of a style is called; empty when it has no other name.
std::string_view styleKeyLabel(std::wstring_view key);

/// A name, "color 7", or the name of an entry in quotes.
std::string stepInWords(const DifferenceStep& step);
std::string placeInWords(std::span<const DifferenceStep> place);

}  // namespace platen

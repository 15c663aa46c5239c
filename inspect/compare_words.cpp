#include "inspect/compare_words.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <platen/style_words.h>
#include <platen/utcore.h>
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

using Change = Difference::Change;
using Kind = DifferenceStep::Kind;

/// Long values would hide the rest of the line.
std::string shortened(std::wstring_view text) {
    constexpr std::size_t longest = 60;
    return text.size() <= longest ? printableUtf8(text)
                                  : printableUtf8(ut::utf16Prefix(text, longest)) + "... (" +
                                        std::to_string(text.size()) + " characters)";
}

/// The integer that a document reads; empty for none.
std::optional<std::int32_t> integerIn(const PiaItem& item) {
    std::int32_t number = 0;
    const bool converts = item.type == PiaItemType::Num &&
                          ut::scanInt(static_cast<const PiaNum&>(item).value.view(), number);
    return converts ? std::optional(number) : std::nullopt;
}

std::string colorOf(const PiaItem& item) {
    const std::optional<std::int32_t> packed = integerIn(item);
    return packed ? colorInWords(*packed) : valueInWords(item);
}
std::string policyOf(const PiaItem& item) {
    const std::optional<std::int32_t> policy = integerIn(item);
    return policy ? colorPolicyInWords(*policy) : valueInWords(item);
}
std::string percentOf(const PiaItem& item) { return valueInWords(item) + " %"; }
std::string switchOf(const PiaItem& item) {
    if (item.type != PiaItemType::Bool) {
        return valueInWords(item);
    }
    return static_cast<const PiaBool&>(item).value ? "on" : "off";
}

/// How the keys of a style are called, and what their values mean.
struct StyleKey {
    std::wstring_view key;
    std::string_view label;
    std::string (*words)(const PiaItem&);
};

constexpr std::wstring_view lineWeightKey = L"lineweight";

constexpr std::array<StyleKey, 15> styleKeys{{
    {L"localized_name", "localized name", valueInWords},
    {L"color", "color", colorOf},
    {L"mode_color", "mode color", colorOf},
    {L"color_policy", "color policy", policyOf},
    {L"physical_pen_number", "pen", valueInWords},
    {L"virtual_pen_number", "virtual pen", valueInWords},
    {L"screen", "screening", percentOf},
    {L"linepattern_size", "line pattern size", valueInWords},
    {L"linetype", "linetype", valueInWords},
    {L"adaptive_linetype", "adaptive linetype", switchOf},
    {lineWeightKey, "lineweight", valueInWords},
    {L"fill_style", "fill style", valueInWords},
    {L"end_style", "end style", valueInWords},
    {L"join_style", "join style", valueInWords},
    {L"custom_lineweight_display_units", "lineweight display units", valueInWords},
}};

const StyleKey* styleKeyOf(std::wstring_view name) {
    const auto found = std::ranges::find(styleKeys, name, &StyleKey::key);
    return found == styleKeys.end() ? nullptr : &*found;
}

}  // namespace

std::string printableUtf8(std::wstring_view text) { return ut::printable(ut::encodeUtf8(text)); }

std::string valueInWords(const PiaItem& item) {
    switch (item.type) {
        case PiaItemType::Bool:
            return static_cast<const PiaBool&>(item).value ? "TRUE" : "FALSE";
        case PiaItemType::Str:
            return '"' + shortened(static_cast<const PiaStr&>(item).value) + '"';
        case PiaItemType::Block: {
            const std::size_t count = static_cast<const PiaBlock&>(item).items.size();
            return std::to_string(count) + (count == 1 ? " item" : " items");
        }
        default:
            return shortened(static_cast<const PiaTextItem&>(item).value);
    }
}

SidesInWords sidesInWords(const Difference& difference, bool ofStyle) {
    const StyleKey* key = ofStyle ? styleKeyOf(difference.place.back().name) : nullptr;
    const auto words = [&](const std::shared_ptr<const PiaItem>& item,
                           const std::optional<double>& millimetres) {
        if (!item) {
            return std::string();
        }
        if (ofStyle && millimetres && difference.place.back().name == lineWeightKey) {
            return numberInWords(*millimetres) + " mm";
        }
        return key != nullptr ? key->words(*item) : valueInWords(*item);
    };
    SidesInWords sides{words(difference.before, difference.millimetresBefore),
                       words(difference.after, difference.millimetresAfter)};
    if (sides.before == sides.after && difference.before && difference.after) {
        // Two places of one line weight, say.
        sides.before += " (" + valueInWords(*difference.before) + ")";
        sides.after += " (" + valueInWords(*difference.after) + ")";
    }
    return sides;
}

bool isOfStyle(const Difference& difference) {
    return difference.place.size() == 3 &&
           difference.place.front().name == PlotStyleTableKeys::styles.text() &&
           difference.place[1].kind != Kind::Member;
}

std::string changeInWords(const std::string& label, const Difference& difference, bool ofStyle) {
    const auto [before, after] = sidesInWords(difference, ofStyle);
    const std::string space = label.empty() ? "" : " ";
    switch (difference.change) {
        case Change::Added:
            return label + space + "added " + after;
        case Change::Removed:
            return label + space + "removed " + before;
        case Change::Changed:
            break;
    }
    return label + space + before + " -> " + after;
}

std::string_view styleKeyLabel(std::wstring_view key) {
    const StyleKey* known = styleKeyOf(key);
    return known == nullptr ? std::string_view() : known->label;
}

std::string stepInWords(const DifferenceStep& step) {
    switch (step.kind) {
        case Kind::Member:
            return printableUtf8(step.name);
        case Kind::Color:
            return "color " + std::to_string(step.number);
        case Kind::Entry:
            break;
    }
    return '"' + printableUtf8(step.name) + '"' +
           (step.number == 0 ? "" : " (no. " + std::to_string(step.number + 1) + ")");
}

std::string placeInWords(std::span<const DifferenceStep> place) {
    std::string words;
    for (const DifferenceStep& step : place) {
        words += (words.empty() ? "" : "/") + stepInWords(step);
    }
    return words;
}

}  // namespace platen

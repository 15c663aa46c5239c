#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>

#include <platen/plotcfg.h>
#include "log/translated.h"

namespace {

struct ColorScheme {
    const wchar_t* name;
    std::int32_t depth;
    std::int32_t colors;
};

constexpr ColorScheme colorSchemes[] = {
    {L"16777215 colors / 32 bit", 32, 16777215},
    {L"16777215 colors / 24 bit", 24, 16777215},
    {L"256 colors / 8 bit", 8, 256},
};
constexpr ColorScheme graySchemes[] = {
    {L"256 shades of grey / 8 bit", 8, 256},
    {L"Black and white / 1 bit", 1, 2},
};

std::span<const ColorScheme> schemes(bool color) {
    return color ? std::span<const ColorScheme>(colorSchemes)
                 : std::span<const ColorScheme>(graySchemes);
}

std::int32_t negated(std::int32_t value) {
    // A file may hold the smallest number, which has no negative.
    return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(value));
}

}  // namespace

OdArray<OdString> CPlotCfg3::getAvailableColorSchemes(int& current) const {
    OdArray<OdString> names;
    if (!isBuiltInImage(this)) {
        return names;
    }
    current = 0;
    for (const ColorScheme& scheme : schemes(resColorMem.numUnditheredColors >= 0)) {
        if (scheme.depth == resColorMem.colorDepth) {
            current = static_cast<int>(names.size());
        }
        names.append(OdString(wut::translated(scheme.name)));
    }
    return names;
}

void CPlotCfg3::setColorScheme(int index, bool color) {
    if (!isBuiltInImage(this)) {
        return;
    }
    const auto list = schemes(color);
    if (index >= 0 && static_cast<std::size_t>(index) < list.size()) {
        const ColorScheme& scheme = list[static_cast<std::size_t>(index)];
        resColorMem.colorDepth = scheme.depth;
        resColorMem.numColors = scheme.colors;
    }
    const std::int32_t depth = resColorMem.colorDepth;
    resColorMem.numUnditheredColors = color ? depth : negated(depth);
}

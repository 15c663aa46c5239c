/// Units of papers.
#pragma once

#include <cstdint>

#include <platen/oda.h>

namespace paper_units {

inline constexpr double millimetresPerInch = 25.4;

/// What a length in `units` is multiplied by to be stored: inches become millimetres, all others
/// stay as they are.
constexpr double millimetresPerUnit(std::int32_t units) {
    return units == OdDbPlotSettings::kInches ? millimetresPerInch : 1.0;
}

/// A length in `from` as one in `to`, either an `OdDbPlotSettings::PlotPaperUnits` or any number
/// that a file holds. Millimetres and pixels count as one scale; an inch is 25.4 of both.
constexpr double converted(double length, std::int32_t from, std::int32_t to) {
    using enum OdDbPlotSettings::PlotPaperUnits;
    if (from == to) {
        return length;
    }
    if (from == kInches) {
        return length * millimetresPerInch;
    }
    const bool sameScale =
        (from == kMillimeters && to == kPixels) || (from == kPixels && to == kMillimeters);
    return sameScale ? length : length / millimetresPerInch;
}

}  // namespace paper_units

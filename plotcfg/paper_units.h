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

}  // namespace paper_units

/// Settings of plot styles in words, as everything that explains a table spells them. All texts are
/// UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <platen/platen_api.h>

namespace platen {

/// The shortest digits that mean exactly this value.
PLATEN_API std::string numberInWords(double value);

/// "object", "index 7", "#ff0000" for a packed colour (see `CPlotStyle`), its hexadecimal digits
/// for any other number.
PLATEN_API std::string colorInWords(std::int32_t packed);

/// "dithered, grayscale" for the bits of a colour policy.
PLATEN_API std::string colorPolicyInWords(std::int32_t policy);

/// "1-9, 12" for ascending numbers.
PLATEN_API std::string rangesInWords(const std::vector<int>& numbers);

}  // namespace platen

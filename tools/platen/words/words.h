/// Values in words, as every summary spells them. All texts are UTF-8 and printable.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace cli::words {

/// The shortest digits that mean exactly this value.
std::string number(double value);
/// At most four digits after the point, for values that were converted.
std::string roundedNumber(double value);
std::string text(std::wstring_view wide);
/// The text in quotes.
std::string quoted(std::wstring_view wide);
/// "in", "mm" or "pixels" for an `OdDbPlotSettings::PlotPaperUnits`.
std::string unitWord(std::int32_t units);

/// One line of a summary.
void line(std::ostream& out, std::string_view label, std::string_view words);

}  // namespace cli::words

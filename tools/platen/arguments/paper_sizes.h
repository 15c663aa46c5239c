/// Sizes and margins of papers as people type them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <platen/edit.h>

namespace cli::arguments {

struct PaperSize {
    double width = 0;
    double height = 0;
};

/// "WIDTHxHEIGHT", two numbers with decimal points.
std::optional<PaperSize> paperSize(std::string_view text);
/// "LEFT,BOTTOM,RIGHT,TOP"
std::optional<platen::PaperShape::Margins> paperMargins(std::string_view text);
/// "mm", "in" or "px"
std::optional<OdDbPlotSettings::PlotPaperUnits> paperUnits(std::string_view text);

}  // namespace cli::arguments

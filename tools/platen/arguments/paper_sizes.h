/// Sizes, margins and names of papers as people type them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <platen/oda.h>

namespace cli::arguments {

struct PaperSize {
    double width = 0;
    double height = 0;
};

struct PaperMargins {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

/// "WIDTHxHEIGHT", two numbers with decimal points.
std::optional<PaperSize> paperSize(std::string_view text);
/// "LEFT,BOTTOM,RIGHT,TOP"
std::optional<PaperMargins> paperMargins(std::string_view text);
/// "mm", "in" or "px"
std::optional<OdDbPlotSettings::PlotPaperUnits> paperUnits(std::string_view text);

/// Why a file cannot keep a paper of this name as it stands; empty when it can.
std::string paperNameFault(std::wstring_view name);

}  // namespace cli::arguments

/// Papers as the commands show them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <platen/papers.h>
#include <platen/plotcfg.h>
#include "tools/platen/console/console.h"

namespace cli::words {

using cli::Console;

/// One paper; lengths are in `units`, an `OdDbPlotSettings::PlotPaperUnits` or any other number
/// that a file holds.
struct ShownPaper {
    std::wstring name;
    /// What configurations call it.
    std::wstring globalName;
    std::int32_t units = OdDbPlotSettings::kMillimeters;
    double width = 0;
    double height = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    /// Margins are a matter of the printer's settings.
    bool marginsKnown = true;
    /// The Windows number of a printer's paper.
    std::optional<std::uint16_t> id;
    /// "configuration" or "parameters" for custom papers, otherwise empty.
    const char* keptIn = "";
};

ShownPaper shown(const wut::PaperSizeInfo& paper);
ShownPaper shown(const CustomPaperSize& paper);

/// "mm", "in", "px", or "?" for a number that is none of these units.
const char* unitSymbol(std::int32_t units);

/// "914.00 x 5000.00 mm"
std::string sizeInWords(const ShownPaper& paper);

/// Prints aligned columns for people.
void printPapers(const std::vector<ShownPaper>& papers, const Console& console);

/// Prints one JSON object a line. `source` is "pdf", "image" or "none", or the name of a file or of
/// a printer.
void printPapersAsJson(const std::vector<ShownPaper>& papers, const std::string& source,
                       const Console& console);

/// The Windows papers by their ids, in either form.
void printCatalogue(bool json, const Console& console);

}  // namespace cli::words

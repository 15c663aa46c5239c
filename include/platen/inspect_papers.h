/// Papers as programs and people are shown them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <platen/papers.h>
#include <platen/platen_api.h>
#include <platen/plotcfg.h>

namespace platen {

/// One paper; lengths are in `units`, an `OdDbPlotSettings::PlotPaperUnits` or any other number
/// that a file holds.
struct ShownPaper {
    /// What people call it.
    std::wstring name;
    /// What configurations call it.
    std::wstring globalName;
    std::int32_t units = OdDbPlotSettings::kMillimeters;
    double width = 0;
    double height = 0;
    /// Margins, each from its side of the paper.
    ///@{
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    ///@}
    /// Margins are a matter of the printer's settings.
    bool marginsKnown = true;
    /// The Windows number of a printer's paper.
    std::optional<std::uint16_t> id;
    /// "configuration" or "parameters" for custom papers, otherwise empty.
    const char* keptIn = "";
};

/// A paper of a built-in device, and a custom one.
///@{
PLATEN_API ShownPaper shown(const wut::PaperSizeInfo& paper);
PLATEN_API ShownPaper shown(const CustomPaperSize& paper);
///@}

/// "mm", "in", "px", or "?" for a number that is none of these units.
PLATEN_API const char* unitSymbol(std::int32_t units);

/// A length of the paper in millimetres; nothing when its units are none of length.
PLATEN_API std::optional<double> inMillimetres(const ShownPaper& paper, double length);

/// One JSON object without a line feed, UTF-8, schema "platen.papers/1". `source` is "pdf", "image"
/// or "none", or the name of a file or of a printer.
PLATEN_API std::string paperJson(const ShownPaper& paper, const std::string& source);

}  // namespace platen

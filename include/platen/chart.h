/// Charts: what the pens of a plot style table draw, and the papers of a plot configuration or of
/// plot model parameters to scale.
///
///     const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::read(L"pens.ctb"));
///     if (table) {
///         const std::string svg = platen::sceneSvg(platen::tableChart(*table, {.title = "Pens"}));
///     }
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/platen_api.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/pmp.h>
#include <platen/scene.h>

namespace platen {

/// How the sheet lies.
enum class ChartOrientation {
    /// As the sheet is given; landscape when none is.
    Automatic,
    Portrait,
    Landscape,
};

/// The sides of a sheet in millimetres.
struct ChartSheet {
    double width = 0;
    double height = 0;
};

/// A sheet by its name: A0 to A6, Letter, Legal, Tabloid, in any case; or by its sides, "594x420".
/// Named ones are landscape. Nothing for other texts, and for sides below 100 mm or above 5 m.
PLATEN_API std::optional<ChartSheet> chartSheet(std::string_view name);
/// The names that `chartSheet` knows.
PLATEN_API std::vector<std::string> chartSheetNames();

struct ChartOptions {
    /// The heading, UTF-8; usually the file's name.
    std::string title{};
    /// Without one, the smallest of A6 to A3 that shows everything well; then more pages of A3.
    std::optional<ChartSheet> sheet{};
    /// How the sheet lies, whatever its sides are given as.
    ChartOrientation orientation = ChartOrientation::Automatic;
    /// Of tables: styles that are equal share a row.
    bool gather = false;
    /// Of tables: line weights as a device of so many dots per inch prints them; 0 for true ones.
    double dpi = 0;
    /// Of configurations: the papers of the built-in device, too.
    bool devicePapers = false;
};

/// Every style with its colour as plotted, a line at its true weight, and its settings in words.
/// Line types, ends, joins and fills of a table are numbers without a known picture: they are named
/// where they are not the standard ones, and lines are drawn unbroken.
PLATEN_API Scene tableChart(const CPlotStyleTable& table, const ChartOptions& options = {});

/// Papers to scale, with their printable areas; papers whose sizes are far from each other stand on
/// pages of their own scales.
PLATEN_API Scene papersChart(const CPlotCfg3& config, const ChartOptions& options = {});
/// The papers of plot model parameters alone.
PLATEN_API Scene papersChart(const PlotModelParam& parameters, const ChartOptions& options = {});

}  // namespace platen

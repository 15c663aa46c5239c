/// What a chart says of each style of a table.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <platen/chart.h>
#include <platen/plotstyle.h>
#include <platen/scene.h>

namespace platen::chart {

/// What is wider is drawn cut off.
inline constexpr double widestLine = 30;

struct StyleRow {
    enum class Weight {
        /// As the drawn object has it.
        Object,
        Millimetres,
        /// The table has no weight of that number.
        Unknown,
    };

    /// Letters, digits and hyphens, one of its own.
    std::string id{};
    /// The numbers of its colours or its name.
    std::string label{};
    /// As plotted, one for each colour that shares the row.
    std::vector<SceneColor> colors{};
    /// The numbers of those colours; none where they are one and the same.
    std::vector<int> numbers{};
    /// The drawn object decides; `colors` has what stands for it.
    bool objectColor = false;
    Weight weight = Weight::Object;
    /// In millimetres; true unless a device prints it otherwise.
    double width = 0;
    std::string weightWords{};
    /// What a device makes of it, "2 dots"; empty for none.
    std::string dotWords{};
    /// The weights that print alike, in words; empty for none.
    std::string alike{};
    /// What is not as in a fresh style.
    std::string words{};
    /// It has numbers of line types, ends, joins or fills of its own.
    bool namedPatterns = false;
};

struct StyleRows {
    std::vector<StyleRow> rows;
    /// Rows stand for colours.
    bool byColor = false;
    /// Sentences about weights that a device prints alike.
    std::vector<std::string> notes;
};

StyleRows styleRows(const CPlotStyleTable& table, const ChartOptions& options);

}  // namespace platen::chart

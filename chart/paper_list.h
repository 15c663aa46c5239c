/// The papers that a chart shows.
#pragma once

#include <string>
#include <vector>

#include <platen/chart.h>

namespace platen::chart {

struct ChartPaper {
    std::string name{};
    /// In millimetres, or in pixels.
    double width = 0;
    double height = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    bool inPixels = false;
    bool custom = false;
    bool chosen = false;
    /// Its sides can be drawn.
    bool hasSize = false;
    /// Something is left between the margins.
    bool hasPrintable = false;
    std::string sizeWords{};
    std::string marginWords{};
    /// Who has it.
    std::string originWords{};
};

struct PaperList {
    /// What the device is and can do, for the heading.
    std::string subtitle;
    std::vector<ChartPaper> papers;
};

PaperList papersOf(const CPlotCfg3& config, bool devicePapers);
PaperList papersOf(const PlotModelParam& parameters);

}  // namespace platen::chart

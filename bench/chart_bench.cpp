/// Charts of a table of 255 styles, beside the library's read of it.

#include <memory>
#include <stdexcept>

#include <platen/chart.h>
#include <platen/plotstyle.h>
#include "bench/sample.h"

namespace {

/// The small table of the samples, read once.
const CPlotStyleTable& table() {
    static const std::unique_ptr<CPlotStyleTable> read(
        CPlotStyleTable::read(bench::sample(bench::Size::Small).name.c_str()));
    if (!read) {
        throw std::runtime_error("the table cannot be read");
    }
    return *read;
}

void chartTable(benchmark::State& state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string svg = platen::sceneSvg(platen::tableChart(table(), {.title = "Pens"}));
        bytes = svg.size();
        benchmark::DoNotOptimize(svg.data());
    }
    state.counters["svg_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(chartTable);

}  // namespace

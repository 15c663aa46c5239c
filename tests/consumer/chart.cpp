// A program of its own that draws a chart with the installed libraries.
#include <platen/chart.h>
#include <platen/chart_files.h>
#include <platen/plotstyle.h>

#include <memory>

int main() {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, L"Pens"));
    const platen::Scene scene = platen::tableChart(*table);
    return platen::scenePdf(scene) && platen::scenePng(scene) ? 0 : 1;
}

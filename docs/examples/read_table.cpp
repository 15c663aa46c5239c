// read_table FILE: which pens of a plot style table are thicker than 0.25 mm.
#include <platen/pia_report.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>

#include <iostream>
#include <memory>

int main(int count, char** arguments) {
    const std::wstring path = count == 2 ? ut::decodePath(arguments[1]) : L"";
    PiaReport report;
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::read(path.c_str(), &report));
    if (!table) {
        std::cerr << report.failure()->describe() << '\n';
        return 1;
    }
    for (std::size_t i = 0; i < table->size(); ++i) {
        const CPlotStyle& pen = *table->style(i);
        // A number of one of the table's line weights; 0 stands for the object's own.
        const auto number = static_cast<std::size_t>(pen.lineWeight());
        if (number > 0 && number < CCustomLineweightTable::count) {
            const double millimetres = table->customLineweights()[number];
            if (millimetres > 0.25) {
                std::cout << ut::encodeUtf8(pen.locName()) << ": " << millimetres << " mm\n";
            }
        }
    }
}

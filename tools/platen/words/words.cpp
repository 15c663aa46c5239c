#include "tools/platen/words/words.h"

#include <iomanip>
#include <ostream>

#include <platen/oda.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "tools/platen/console/console.h"

namespace cli::words {

std::string number(double value) { return platen::numberInWords(value); }

std::string roundedNumber(double value) {
    constexpr int places = 4;
    return ut::formatRounded(value, places);
}

std::string text(std::wstring_view wide) { return printable(ut::encodeUtf8(wide)); }

std::string quoted(std::wstring_view wide) { return '"' + text(wide) + '"'; }

std::string unitWord(std::int32_t units) {
    switch (units) {
        case OdDbPlotSettings::kInches:
            return "in";
        case OdDbPlotSettings::kMillimeters:
            return "mm";
        case OdDbPlotSettings::kPixels:
            return "pixels";
        default:
            return "of unit " + std::to_string(units);
    }
}

void line(std::ostream& out, std::string_view label, std::string_view words) {
    constexpr int labelWidth = 15;
    out << "  " << std::left << std::setw(labelWidth) << label << words << '\n';
}

}  // namespace cli::words

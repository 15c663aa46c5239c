#include "tools/platen/arguments/paper_sizes.h"

#include <array>
#include <cstddef>

namespace cli::arguments {
namespace {

/// The numbers between the separators, when all of them are there.
template <std::size_t Count>
std::optional<std::array<double, Count>> numbersIn(std::string_view text,
                                                   std::string_view separators) {
    std::array<double, Count> numbers{};
    for (std::size_t index = 0; index < Count; ++index) {
        const std::size_t end =
            index + 1 < Count ? text.find_first_of(separators) : std::string_view::npos;
        const std::optional<double> number = platen::wholeNumber(text.substr(0, end));
        if (!number || (index + 1 < Count && end == std::string_view::npos)) {
            return std::nullopt;
        }
        numbers[index] = *number;
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return numbers;
}

}  // namespace

std::optional<PaperSize> paperSize(std::string_view text) {
    const auto numbers = numbersIn<2>(text, "xX");
    return numbers ? std::optional(PaperSize{(*numbers)[0], (*numbers)[1]}) : std::nullopt;
}

std::optional<platen::PaperShape::Margins> paperMargins(std::string_view text) {
    const auto numbers = numbersIn<4>(text, ",");
    return numbers ? std::optional(platen::PaperShape::Margins{(*numbers)[0], (*numbers)[1],
                                                               (*numbers)[2], (*numbers)[3]})
                   : std::nullopt;
}

std::optional<OdDbPlotSettings::PlotPaperUnits> paperUnits(std::string_view text) {
    using enum OdDbPlotSettings::PlotPaperUnits;
    if (text == "mm") {
        return kMillimeters;
    }
    if (text == "in") {
        return kInches;
    }
    return text == "px" ? std::optional(kPixels) : std::nullopt;
}

}  // namespace cli::arguments

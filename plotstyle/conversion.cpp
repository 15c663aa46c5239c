#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <string>

#include <platen/plotstyle.h>
#include "plotstyle/style_settings.h"

CPlotStyleTable* ctb2stb(const CPlotStyleTable& source, const wchar_t* prefix) {
    if (!source.usesAci_) {
        return nullptr;
    }
    std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, prefix));
    table->description_ = source.description_;
    table->scaleFactor_ = source.scaleFactor_;
    table->applyFactor_ = source.applyFactor_;
    table->displayUnits_ = source.displayUnits_;
    table->customLineweights_ = source.customLineweights_;

    const std::wstring beginning = std::wstring(prefix == nullptr ? L"Style" : prefix) + L' ';
    std::array<int, CAciTable::count> positions{};
    // Where the style of given settings stands. "Normal" is not in it: no colour uses that one.
    // Ordered, since no choice of settings makes an ordered map slow.
    std::map<decltype(plot_style::settingsOf(CPlotStyle())), int> positionOf;
    for (std::size_t index = 0; index < source.styles_.size(); ++index) {
        const CPlotStyle& style = *source.styles_[index];
        const auto next = static_cast<int>(table->styles_.size());
        // A NaN equals nothing and would break the order.
        const int position =
            std::isnan(style.linepattern_size())
                ? next
                : positionOf.emplace(plot_style::settingsOf(style), next).first->second;
        if (position == next) {
            // Not by `addStyle`, which looks through all styles for the name: none has it, as the
            // names differ in their numbers and "Normal" holds no space.
            const std::wstring name = beginning + std::to_wstring(next);
            table->insertStyle(name.c_str(), table->styles_.size(), style);
        }
        if (index < positions.size()) {
            positions[index] = position;
        }
    }
    table->addACI(positions.data());
    return table.release();
}

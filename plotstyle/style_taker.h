/// Takes the styles of a table as its file is read.
#pragma once

#include <vector>

#include "pia/entry_taker.h"
#include "plotstyle/style_keys.h"
#include "plotstyle/style_memory.h"
#include "plotstyle/table_keys.h"

namespace plot_style {

class StyleTaker final : public PiaEntryTaker {
public:
    /// The styles are made in `memory`.
    explicit StyleTaker(StyleMemory& memory)
        : PiaEntryTaker(PlotStyleTableKeys::styles), memory_(memory) {}

    /// What follows a style that cannot be read is not looked at: the table is of no use.
    void take(const PiaBlock& entry) override;

    /// The style of the next block of the list; null when it cannot be read, which `report` then
    /// says.
    StylePtr next(PiaReport& report);

private:
    StyleMemory& memory_;
    std::vector<StylePtr> styles_;
    std::size_t given_ = 0;
    NodeCodec<CPlotStyle>::Places keyPlaces_;
    /// Why the style after those could not be read.
    PiaReport why_;
};

}  // namespace plot_style

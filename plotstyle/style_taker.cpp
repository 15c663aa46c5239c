#include "plotstyle/style_taker.h"

#include <utility>

namespace plot_style {

void StyleTaker::take(const PiaBlock& entry) {
    if (why_.failure()) {
        return;
    }
    const PiaPath list{.parent = nullptr, .name = this->list().text()};
    StylePtr style = memory_.make();
    if (NodeCodec<CPlotStyle>::read(entry, *style,
                                    {.parent = &list, .name = entry.name, .line = entry.line()},
                                    why_, keyPlaces_)) {
        styles_.push_back(std::move(style));
    }
}

StylePtr StyleTaker::next(PiaReport& report) {
    if (given_ == styles_.size()) {
        report.fail(*why_.failure());
        return nullptr;
    }
    return std::move(styles_[given_++]);
}

}  // namespace plot_style

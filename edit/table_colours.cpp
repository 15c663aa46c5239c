#include <platen/edit_styles.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "edit/refusal.h"

namespace platen {

ColourTable colourTableOf(const CPlotStyleTable& named) {
    ColourTable result;
    const CAciTable* aci = named.ACI();
    if (aci == nullptr || !named.hasACI()) {
        return result;
    }
    std::unique_ptr<CPlotStyleTable> table(
        CPlotStyleTable::create(true, named.description().c_str()));
    table->setScaleFactor(named.scaleFactor());
    table->setApplyFactor(named.applyFactor());
    table->setCustomLineweightDisplayUnits(named.customLineweightDisplayUnits());
    table->customLineweights() = named.customLineweights();
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        const CPlotStyle* used = aci->at(entry);
        if (used == nullptr) {
            return result;
        }
        CPlotStyle style = *used;
        style.setNames(table->style(entry)->name(), table->style(entry)->locName());
        *table->style(entry) = std::move(style);
    }
    for (std::size_t place = 0; place < named.size(); ++place) {
        std::vector<int> colours;
        for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
            if (aci->at(entry) == named.style(place)) {
                colours.push_back(static_cast<int>(entry) + 1);
            }
        }
        const std::string name = quoted(named.style(place)->locName());
        result.lost.push_back(colours.empty() ? "the style " + name + ", which no colour uses"
                                              : "the name " + name + " of what is now colour " +
                                                    rangesInWords(colours));
    }
    result.table = std::move(table);
    return result;
}

}  // namespace platen

#include <platen/edit_styles.h>
#include <platen/inspect.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "edit/refusal.h"

namespace platen {
namespace {

/// A file may leave its colour index out, which means that every colour has the style of its
/// place. The conversion asks for one that is spelled out.
bool spellOutIndex(CPlotStyleTable& table) {
    PiaBlock index{L""};
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        if (!table.writeAciEntry(index, static_cast<int>(entry))) {
            return false;
        }
    }
    return table.initAci(index);
}

}  // namespace

NamedTable namedTableOf(const CPlotStyleTable& colours, const std::wstring& prefix) {
    CPlotStyleTable source(colours);
    NamedTable result;
    result.inOrder = hasStylePerColour(source);
    if (source.useACI() || spellOutIndex(source)) {
        result.table.reset(ctb2stb(source, prefix.empty() ? nullptr : prefix.c_str()));
    }
    return result;
}

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
        const std::vector<int> colours = colorsOf(named, *named.style(place));
        const std::string name = quoted(named.style(place)->locName());
        result.lost.push_back(colours.empty() ? "the style " + name + ", which no colour uses"
                                              : "the name " + name + " of what is now colour " +
                                                    rangesInWords(colours));
    }
    result.table = std::move(table);
    return result;
}

}  // namespace platen

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "pia.h"
#include "plotstyle.h"
#include "plotstyle/index_name.h"
#include "plotstyle/table_keys.h"
#include "utcore.h"

namespace {

/// A style that keeps the object's own colour needs no mode colour in the file.
bool keepsObjectColor(const CPlotStyle& style) {
    const CPlotStyle plain;
    return style.color_policy() == plain.color_policy() && style.color() == plain.color();
}

}  // namespace

bool CPlotStyleTable::write(const wchar_t* path, PiaReport* report) const {
    if (path == nullptr) {
        if (report != nullptr) {
            PiaFinding finding;
            finding.code = PiaCode::FileUnwritable;
            finding.expected = L"a path";
            report->fail(std::move(finding));
        }
        return false;
    }
    PiaTree tree;
    if (!writeToBlock(tree.root())) {
        return false;
    }
    PiaFileOut file;
    file.setKind(ut::hasExtension(path, L"ctb") ? PiaKind::Ctb : PiaKind::Stb);
    const bool done = file.write(&tree.root(), path);
    if (report != nullptr) {
        *report = file.report();
    }
    return done;
}

bool CPlotStyleTable::writeToBlock(PiaBlock& root) const {
    if (!node_keys::write<CPlotStyleTable>(PlotStyleTableKeys::settings, *this, root,
                                           [](const NodeKey<CPlotStyleTable>&) { return true; })) {
        return false;
    }

    if (aciMayBeWritten_ && aciAvailable_) {
        PiaBlock* entries = root.addBlock(PlotStyleTableKeys::aciTable);
        if (entries == nullptr) {
            return false;
        }
        for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
            if (!writeAciEntry(*entries, static_cast<int>(entry))) {
                return false;
            }
        }
    }

    PiaBlock* styles = root.addBlock(PlotStyleTableKeys::styles);
    if (styles == nullptr) {
        return false;
    }
    const bool writeModeColor = !std::all_of(
        styles_.begin(), styles_.end(), [](const auto& style) { return keepsObjectColor(*style); });
    for (std::size_t index = 0; index < styles_.size(); ++index) {
        if (!styles_[index]->write(*styles, static_cast<int>(index), writeModeColor)) {
            return false;
        }
    }

    PiaBlock* weights = root.addBlock(PlotStyleTableKeys::lineWeights);
    if (weights == nullptr) {
        return false;
    }
    for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
        if (!writeCLW(*weights, static_cast<int>(index))) {
            return false;
        }
    }
    return true;
}

bool CPlotStyleTable::writeAciEntry(PiaBlock& block, int index) const {
    const CPlotStyle* style =
        aci_ == nullptr || index < 0 ? nullptr : aci_->at(static_cast<std::size_t>(index));
    return style != nullptr && block.addString(plot_style::IndexName(index).view(), style->name());
}

bool CPlotStyleTable::writeCLW(PiaBlock& block, int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < CCustomLineweightTable::count &&
           block.addDouble(plot_style::IndexName(index).view(),
                           customLineweights_[static_cast<std::size_t>(index)]);
}

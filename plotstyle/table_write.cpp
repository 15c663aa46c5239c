#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include <platen/pia.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "plotstyle/index_name.h"
#include "plotstyle/table_keys.h"

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
    PiaFileOut file;
    file.setKind(ut::hasExtension(path, L"ctb") ? PiaKind::Ctb : PiaKind::Stb);
    const bool done = file.write([this](PiaSink& sink) { return writeTo(sink); }, path);
    if (report != nullptr) {
        *report = file.report();
    }
    return done;
}

bool CPlotStyleTable::writeToBlock(PiaBlock& root) const { return writeTo(root); }

bool CPlotStyleTable::writeTo(PiaSink& root) const {
    if (!node_keys::write(*this, root)) {
        return false;
    }

    if (aciMayBeWritten_ && aciAvailable_) {
        PiaSink* entries = root.addBlock(PlotStyleTableKeys::aciTable);
        if (entries == nullptr) {
            return false;
        }
        for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
            if (!addAciEntry(*entries, entry)) {
                return false;
            }
        }
    }

    PiaSink* styles = root.addBlock(PlotStyleTableKeys::styles);
    if (styles == nullptr) {
        return false;
    }
    const bool writeModeColor = !std::all_of(
        styles_.begin(), styles_.end(), [](const auto& style) { return keepsObjectColor(*style); });
    for (std::size_t index = 0; index < styles_.size(); ++index) {
        if (!styles_[index]->writeTo(*styles, static_cast<int>(index), writeModeColor)) {
            return false;
        }
    }

    PiaSink* weights = root.addBlock(PlotStyleTableKeys::lineWeights);
    if (weights == nullptr) {
        return false;
    }
    for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
        if (!addLineWeight(*weights, index)) {
            return false;
        }
    }
    return true;
}

bool CPlotStyleTable::addAciEntry(PiaSink& block, std::size_t index) const {
    const CPlotStyle* style = aci_ == nullptr ? nullptr : aci_->at(index);
    return style != nullptr &&
           block.addString(plot_style::IndexName(static_cast<int>(index)).view(), style->name());
}

bool CPlotStyleTable::addLineWeight(PiaSink& block, std::size_t index) const {
    return block.addDouble(plot_style::IndexName(static_cast<int>(index)).view(),
                           customLineweights_[index]);
}

bool CPlotStyleTable::writeAciEntry(PiaBlock& block, int index) const {
    return index >= 0 && addAciEntry(block, static_cast<std::size_t>(index));
}

bool CPlotStyleTable::writeCLW(PiaBlock& block, int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < CCustomLineweightTable::count &&
           addLineWeight(block, static_cast<std::size_t>(index));
}

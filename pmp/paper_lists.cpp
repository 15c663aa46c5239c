#include <algorithm>

#include <platen/pmp.h>
#include "pmp/unique_names.h"

namespace {

template <class Papers>
void makeLastUnique(Papers& papers) {
    if (papers.empty()) {
        return;
    }
    UniqueNames names;
    for (auto paper = papers.begin(); paper != papers.end() - 1; ++paper) {
        names.note(paper->name);
    }
    papers.back().name = names.make(papers.back().name);
}

}  // namespace

void PmpSizeNode::makeLastNameUnique() { makeLastUnique(papers); }
void PmpDescriptionNode::makeLastNameUnique() { makeLastUnique(papers); }

bool ModNode::MediaNode::getMargins(const std::wstring& name, double& left, double& right,
                                    double& top, double& bottom,
                                    OdDbPlotSettings::PlotPaperUnits units) const {
    if (!size || !description) {
        return false;
    }
    const auto paper = std::find_if(size->papers.begin(), size->papers.end(),
                                    [&](const auto& entry) { return entry.name == name; });
    if (paper == size->papers.end() || paper->mediaDescriptionName.empty()) {
        return false;
    }
    const auto found =
        std::find_if(description->papers.begin(), description->papers.end(),
                     [&](const auto& entry) { return entry.name == paper->mediaDescriptionName; });
    if (found == description->papers.end()) {
        return false;
    }
    constexpr double millimetresPerInch = 25.4;
    const double scale = units == OdDbPlotSettings::kInches ? millimetresPerInch : 1.0;
    left = found->printableBoundsLlx / scale;
    right = (found->mediaBoundsUrx - found->printableBoundsUrx) / scale;
    top = (found->mediaBoundsUry - found->printableBoundsUry) / scale;
    bottom = found->printableBoundsLly / scale;
    return true;
}

#include <algorithm>
#include <iterator>
#include <utility>

#include <platen/papers.h>
#include <platen/plotcfg.h>
#include "plotcfg/paper_units.h"

bool CMediaNode::CSizeNode::setName(const wchar_t* newName) {
    if (newName == nullptr) {
        return false;
    }
    const bool same = name == newName;
    name = newName;
    return same;
}

bool CMediaNode::CDestinationNode::setCollating(bool on) {
    const std::int32_t newType = on ? 1 : 0;
    collatingName = on ? L"Regular" : L"None";
    return std::exchange(collatingType, newType) != newType;
}

bool CMediaNode::emptyBounds() const {
    constexpr double shortest = 0.0001;
    constexpr double smallest = 1e-8;
    const auto& description = size.mediaDescription;
    const double lengths[] = {
        actualPrintableBoundsLlx,       actualPrintableBoundsLly,
        actualPrintableBoundsUrx,       actualPrintableBoundsUry,
        description.printableBoundsLlx, description.printableBoundsLly,
        description.printableBoundsUrx, description.printableBoundsUry,
        description.mediaBounds.urx,    description.mediaBounds.ury,
    };
    return std::any_of(std::begin(lengths), std::end(lengths),
                       [](double length) { return length < shortest; }) ||
           description.printableArea < smallest;
}

void CMediaNode::swapBounds() {
    auto& description = size.mediaDescription;
    std::swap(actualPrintableBoundsLlx, actualPrintableBoundsLly);
    std::swap(actualPrintableBoundsUrx, actualPrintableBoundsUry);
    std::swap(description.printableBoundsLlx, description.printableBoundsLly);
    std::swap(description.printableBoundsUrx, description.printableBoundsUry);
    std::swap(description.mediaBounds.urx, description.mediaBounds.ury);
}

bool CMediaNode::applyPaper(const CustomPaperSize& paper) {
    const bool changed = !size.setName(paper.globalName.c_str());
    const double scale = paper_units::millimetresPerUnit(paper.units);
    auto& description = size.mediaDescription;
    description.mediaBounds.urx = paper.width * scale;
    description.mediaBounds.ury = paper.height * scale;
    description.printableBoundsLlx = paper.left * scale;
    description.printableBoundsLly = paper.bottom * scale;
    description.printableBoundsUrx = (paper.width - paper.right) * scale;
    description.printableBoundsUry = (paper.height - paper.top) * scale;
    description.printableArea = (description.printableBoundsUrx - description.printableBoundsLlx) *
                                (description.printableBoundsUry - description.printableBoundsLly);
    description.dimensional = paper.units != OdDbPlotSettings::kPixels;
    actualPrintableBoundsLlx = description.printableBoundsLlx;
    actualPrintableBoundsLly = description.printableBoundsLly;
    actualPrintableBoundsUrx = description.printableBoundsUrx;
    actualPrintableBoundsUry = description.printableBoundsUry;
    return changed;
}

bool CMediaNode::applyPaper(const wut::PaperSizeInfo& paper) {
    CustomPaperSize custom;
    custom.globalName = paper.canonicalName;
    custom.units = paper.units;
    custom.width = paper.width;
    custom.height = paper.height;
    custom.left = paper.left;
    custom.bottom = paper.bottom;
    custom.right = paper.right;
    custom.top = paper.top;
    return applyPaper(custom);
}

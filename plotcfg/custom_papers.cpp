#include <platen/custom_papers.h>

#include <wx/string.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "plotcfg/paper_units.h"

namespace wut {

namespace {

using enum OdDbPlotSettings::PlotPaperUnits;

/// Papers of files may have units of no known number.
double converted(double value, std::int32_t from, std::int32_t to) {
    if (from == to) {
        return value;
    }
    if (from == kInches) {
        return value * paper_units::millimetresPerInch;
    }
    const bool sameScale =
        (from == kMillimeters && to == kPixels) || (from == kPixels && to == kMillimeters);
    return sameScale ? value : value / paper_units::millimetresPerInch;
}

}  // namespace

CustomPapers::~CustomPapers() = default;

void CustomPapers::load() { config_->getCustomPaperSizes(papers_); }
void CustomPapers::save() { config_->setCustomPaperSizes(papers_); }

unsigned CustomPapers::size() const { return static_cast<unsigned>(papers_.size()); }

wxString CustomPapers::getName(unsigned index) { return papers_[index].localName; }

void CustomPapers::setName(unsigned index, const wxString& name) {
    papers_[index].localName = name.ToStdWstring();
}

bool CustomPapers::isDuplicateName(const wxString& name) const {
    return std::any_of(papers_.begin(), papers_.end(),
                       [wanted = name.ToStdWstring()](const CustomPaperSize& paper) {
                           return paper.localName == wanted || paper.globalName == wanted;
                       });
}

double CustomPapers::shown(unsigned index, double CustomPaperSize::*length) const {
    const CustomPaperSize& paper = papers_[index];
    return converted(paper.*length, paper.units, defaultUnits_);
}

void CustomPapers::store(unsigned index, double CustomPaperSize::*length, double value,
                         Units units) {
    CustomPaperSize& paper = papers_[index];
    paper.*length = converted(value, units, paper.units);
}

double CustomPapers::getWidth(unsigned index) const {
    return shown(index, &CustomPaperSize::width);
}
double CustomPapers::getHeight(unsigned index) const {
    return shown(index, &CustomPaperSize::height);
}
double CustomPapers::getTopMargin(unsigned index) const {
    return shown(index, &CustomPaperSize::top);
}
double CustomPapers::getBottomMargin(unsigned index) const {
    return shown(index, &CustomPaperSize::bottom);
}
double CustomPapers::getLeftMargin(unsigned index) const {
    return shown(index, &CustomPaperSize::left);
}
double CustomPapers::getRightMargin(unsigned index) const {
    return shown(index, &CustomPaperSize::right);
}

void CustomPapers::setSize(unsigned index, double width, double height) {
    store(index, &CustomPaperSize::width, width, defaultUnits_);
    store(index, &CustomPaperSize::height, height, defaultUnits_);
}

void CustomPapers::setLeftMargin(unsigned index, double margin) {
    setLeftMargin(index, margin, defaultUnits_);
}
void CustomPapers::setLeftMargin(unsigned index, double margin, Units units) {
    store(index, &CustomPaperSize::left, margin, units);
}
void CustomPapers::setRightMargin(unsigned index, double margin) {
    setRightMargin(index, margin, defaultUnits_);
}
void CustomPapers::setRightMargin(unsigned index, double margin, Units units) {
    store(index, &CustomPaperSize::right, margin, units);
}
void CustomPapers::setTopMargin(unsigned index, double margin) {
    setTopMargin(index, margin, defaultUnits_);
}
void CustomPapers::setTopMargin(unsigned index, double margin, Units units) {
    store(index, &CustomPaperSize::top, margin, units);
}
void CustomPapers::setBottomMargin(unsigned index, double margin) {
    setBottomMargin(index, margin, defaultUnits_);
}
void CustomPapers::setBottomMargin(unsigned index, double margin, Units units) {
    store(index, &CustomPaperSize::bottom, margin, units);
}

void CustomPapers::append(const wxString& name) {
    CustomPaperSize& paper = papers_.emplace_back();
    paper.source = 1;
    paper.localName = name.ToStdWstring();
    paper.globalName = paper.localName;
    paper.units = defaultUnits_;
}

void CustomPapers::remove(unsigned index) {
    papers_.erase(papers_.begin() + static_cast<std::ptrdiff_t>(index));
}

}  // namespace wut

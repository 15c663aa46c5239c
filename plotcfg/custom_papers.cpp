#include <platen/custom_papers.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "plotcfg/paper_units.h"

namespace wut {

using paper_units::converted;

void CustomPaperList::load() { config_->getCustomPaperSizes(papers_); }
void CustomPaperList::save() { config_->setCustomPaperSizes(papers_); }

unsigned CustomPaperList::size() const { return static_cast<unsigned>(papers_.size()); }

void CustomPaperList::setName(unsigned index, const std::wstring& name) {
    papers_[index].localName = name;
}

bool CustomPaperList::hasName(const std::wstring& name) const {
    return std::any_of(papers_.begin(), papers_.end(), [&](const CustomPaperSize& paper) {
        return paper.localName == name || paper.globalName == name;
    });
}

double CustomPaperList::get(unsigned index, Length length) const {
    const CustomPaperSize& paper = papers_[index];
    return converted(paper.*length, paper.units, defaultUnits_);
}

void CustomPaperList::set(unsigned index, Length length, double value, Units units) {
    CustomPaperSize& paper = papers_[index];
    paper.*length = converted(value, units, paper.units);
}

void CustomPaperList::append(const std::wstring& name) {
    CustomPaperSize& paper = papers_.emplace_back();
    paper.source = 1;
    paper.localName = name;
    paper.globalName = name;
    paper.units = defaultUnits_;
}

void CustomPaperList::remove(unsigned index) {
    papers_.erase(papers_.begin() + static_cast<std::ptrdiff_t>(index));
}

}  // namespace wut

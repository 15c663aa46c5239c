/// The custom papers with wxWidgets' texts.

#include <platen/custom_papers.h>

#include <wx/string.h>

namespace wut {

CustomPapers::~CustomPapers() = default;

void CustomPapers::load() { papers_.load(); }
void CustomPapers::save() { papers_.save(); }

unsigned CustomPapers::size() const { return papers_.size(); }

wxString CustomPapers::getName(unsigned index) { return papers_[index].localName; }

void CustomPapers::setName(unsigned index, const wxString& name) {
    papers_.setName(index, name.ToStdWstring());
}

bool CustomPapers::isDuplicateName(const wxString& name) const {
    return papers_.hasName(name.ToStdWstring());
}

double CustomPapers::getWidth(unsigned index) const {
    return papers_.get(index, &CustomPaperSize::width);
}
double CustomPapers::getHeight(unsigned index) const {
    return papers_.get(index, &CustomPaperSize::height);
}
double CustomPapers::getTopMargin(unsigned index) const {
    return papers_.get(index, &CustomPaperSize::top);
}
double CustomPapers::getBottomMargin(unsigned index) const {
    return papers_.get(index, &CustomPaperSize::bottom);
}
double CustomPapers::getLeftMargin(unsigned index) const {
    return papers_.get(index, &CustomPaperSize::left);
}
double CustomPapers::getRightMargin(unsigned index) const {
    return papers_.get(index, &CustomPaperSize::right);
}

void CustomPapers::setSize(unsigned index, double width, double height) {
    papers_.set(index, &CustomPaperSize::width, width);
    papers_.set(index, &CustomPaperSize::height, height);
}

void CustomPapers::setLeftMargin(unsigned index, double margin) {
    setLeftMargin(index, margin, getDefaultUnits());
}
void CustomPapers::setLeftMargin(unsigned index, double margin, Units units) {
    papers_.set(index, &CustomPaperSize::left, margin, units);
}
void CustomPapers::setRightMargin(unsigned index, double margin) {
    setRightMargin(index, margin, getDefaultUnits());
}
void CustomPapers::setRightMargin(unsigned index, double margin, Units units) {
    papers_.set(index, &CustomPaperSize::right, margin, units);
}
void CustomPapers::setTopMargin(unsigned index, double margin) {
    setTopMargin(index, margin, getDefaultUnits());
}
void CustomPapers::setTopMargin(unsigned index, double margin, Units units) {
    papers_.set(index, &CustomPaperSize::top, margin, units);
}
void CustomPapers::setBottomMargin(unsigned index, double margin) {
    setBottomMargin(index, margin, getDefaultUnits());
}
void CustomPapers::setBottomMargin(unsigned index, double margin, Units units) {
    papers_.set(index, &CustomPaperSize::bottom, margin, units);
}

void CustomPapers::append(const wxString& name) { papers_.append(name.ToStdWstring()); }

void CustomPapers::remove(unsigned index) { papers_.remove(index); }

}  // namespace wut

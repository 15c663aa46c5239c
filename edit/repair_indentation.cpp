// Writers indent each line by the number of blocks that it is in. Where braces are missing or too
// many, that says where blocks begin and end.
#include "edit/repair_salvage.h"

namespace platen {

using repair_lines::kindOf;
using repair_lines::LineKind;

namespace {

/// Whether a line could follow where `depth` blocks are open.
bool fits(const repair_lines::Line& line, std::size_t depth) {
    return line.indentation() + (kindOf(line.text) == LineKind::Closing ? 1 : 0) == depth;
}

}  // namespace

void BodySalvage::beginLeftOut(std::size_t indentation) {
    leftOutDepth_ = 1;
    leftOutIndentation_ = indentation;
    leftOutLines_ = 1;
    leftOutFrom_ = lineNumber();
}

void BodySalvage::endLeftOut() {
    if (leftOutDepth_ != 0) {
        leftOutDepth_ = 0;
        notes_.lose({.count = leftOutLines_, .line = leftOutFrom_, .path = pathOf({})});
    }
}

bool BodySalvage::isLeftOut(std::string_view text) {
    if (leftOutDepth_ == 0) {
        return false;
    }
    const LineKind kind = kindOf(text);
    const std::size_t indentation = text.find_first_not_of(' ');
    const bool isEnd = kind == LineKind::Closing &&
                       (indented_ ? indentation <= leftOutIndentation_ : leftOutDepth_ == 1);
    if (indented_ && !isEnd && indentation <= leftOutIndentation_) {
        endLeftOut();
        return false;
    }
    ++leftOutLines_;
    leftOutDepth_ += kind == LineKind::Opening ? 1 : 0;
    leftOutDepth_ -= kind == LineKind::Closing && leftOutDepth_ > 1 ? 1 : 0;
    if (isEnd) {
        endLeftOut();
    }
    return true;
}

bool BodySalvage::followIndentation(const Line& line) {
    const LineKind kind = kindOf(line.text);
    if (!indented_ || kind == LineKind::Other || (kind == LineKind::Closing && depth() == 0) ||
        fits(line, depth())) {
        return true;
    }
    const std::size_t indentation = line.indentation();
    const std::size_t expected = depth() - (kind == LineKind::Closing ? 1 : 0);
    // Where the next line fits, only this one is indented oddly.
    const Line* next = nextLine();
    if (next != nullptr && fits(*next, expected + (kind == LineKind::Opening ? 1 : 0))) {
        return true;
    }
    if (indentation < expected) {
        for (std::size_t count = expected - indentation; count > 0; --count) {
            assume(RepairCode::ClosingBraceMissing, line.text);
            close();
        }
        return true;
    }
    if (kind != LineKind::Closing) {
        return !leavesOutHeadless(indentation);
    }
    if (next == nullptr) {
        return true;
    }
    assume(RepairCode::ClosingBraceSurplus, line.text);
    return false;
}

bool BodySalvage::leavesOutHeadless(std::size_t indentation) {
    std::size_t end = index_;
    // Many lines may look further than they need: together not without end.
    while (end < lines_.size() && lookAhead_ > 0 &&
           (lines_[end].isBlank() || lines_[end].indentation() >= indentation)) {
        ++end;
        --lookAhead_;
    }
    if (indentation != depth() + 1 || end == lines_.size() || lookAhead_ == 0 ||
        kindOf(lines_[end].text) != LineKind::Closing || lines_[end].indentation() != depth()) {
        return false;
    }
    assume(RepairCode::BlockHeadMissing, lines_[index_].text);
    lose(Loss::Unit::Lines, end - index_ + 1, lines_[index_].text);
    index_ = end;
    return true;
}

}  // namespace platen

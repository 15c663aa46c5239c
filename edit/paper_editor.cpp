#include <platen/edit_papers.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include <platen/utcore.h>
#include "edit/refusal.h"
#include "plotcfg/paper_units.h"

namespace platen {
namespace {

using enum OdDbPlotSettings::PlotPaperUnits;

/// Why a file cannot keep a paper of this name as it stands; empty when it can.
std::string nameFault(const std::wstring& name) {
    constexpr std::size_t longest = 400;
    std::string bytes;
    if (name.empty()) {
        return "a paper needs a name";
    }
    if (std::any_of(name.begin(), name.end(), [](wchar_t unit) { return unit < L' '; })) {
        return "a name is one line without control characters";
    }
    if (ut::utf16Length(name) > longest) {
        return "a name has " + std::to_string(longest) + " characters at most";
    }
    if (ut::convertToAnsi(name, bytes) > 0) {
        return "the name has characters that files do not hold (they are written in " +
               ut::ansiCodePage() + ")";
    }
    return {};
}

/// What is wrong with one side of a paper, in millimetres or pixels.
std::string sideFault(const char* side, double length, double before, double behind, double limit) {
    constexpr double shortest = 0.001;
    constexpr double longest = 1e6;
    const double largest = limit > 0 ? limit : longest;
    const std::string it = std::string("the ") + side;
    if (!(length >= shortest)) {
        return it + " is not positive";
    }
    if (length > largest) {
        return it + " is " + ut::formatFixedAscii(length, 2) + " and the device takes " +
               ut::formatFixedAscii(largest, 2) + " (millimetres or pixels) at most";
    }
    if (!(before >= 0 && behind >= 0)) {
        return "a margin is negative";
    }
    return before + behind < length ? "" : "the margins leave nothing of " + it;
}

/// Gives the paper the lengths, which are in `units`.
void setLengths(CustomPaperSize& paper, const PaperShape& shape, std::int32_t units) {
    const auto own = [&](double length) {
        return paper_units::converted(length, units, paper.units);
    };
    paper.width = own(shape.width);
    paper.height = own(shape.height);
    if (shape.margins) {
        paper.left = own(shape.margins->left);
        paper.bottom = own(shape.margins->bottom);
        paper.right = own(shape.margins->right);
        paper.top = own(shape.margins->top);
    }
}

}  // namespace

PaperEditor::PaperEditor(PaperFile& file) : file_(file) {
    file_.config().getCustomPaperSizes(list_);
}

EditResult PaperEditor::add(const std::wstring& name, const PaperShape& shape) {
    if (EditResult done = checkName(name, list_.size()); !done) {
        return done;
    }
    CustomPaperSize paper;
    paper.source = 1;
    paper.globalName = paper.localName = name;
    const bool raster = CPlotCfg3::isBuiltInImage(&file_.config());
    paper.units = shape.units.value_or(raster ? kPixels : kMillimeters);
    setLengths(paper, shape, paper.units);
    if (EditResult done = checkShape(paper); !done) {
        return done;
    }
    list_.push_back(paper);
    store(list_.size() - 1);
    return {};
}

EditResult PaperEditor::remove(const std::wstring& name) {
    if (EditResult done = find(name); !done) {
        return done;
    }
    paper_ = list_[found_];
    list_.erase(list_.begin() + static_cast<std::ptrdiff_t>(found_));
    file_.config().setCustomPaperSizes(list_);
    file_.config().getCustomPaperSizes(list_);
    return {};
}

EditResult PaperEditor::rename(const std::wstring& name, const std::wstring& newName) {
    EditResult done = find(name);
    if (done) {
        done = checkName(newName, found_);
    }
    if (done) {
        list_[found_].localName = newName;
        store(found_);
    }
    return done;
}

EditResult PaperEditor::resize(const std::wstring& name, const PaperShape& shape) {
    if (EditResult done = find(name); !done) {
        return done;
    }
    CustomPaperSize paper = list_[found_];
    const bool known = paper.units == kInches || paper.units == kPixels;
    setLengths(paper, shape,
               shape.units ? *shape.units
               : known     ? paper.units
                           : std::int32_t{kMillimeters});
    if (EditResult done = checkShape(paper); !done) {
        return done;
    }
    paper_ = list_[found_];
    const bool current = isCurrent();
    list_[found_] = std::move(paper);
    store(found_);
    if (current) {
        bool changed = false;
        file_.config().setPaperSize(found_, false, changed);
    }
    return {};
}

bool PaperEditor::isCurrent() const {
    return file_.isConfiguration() && file_.config().media.size.name == paper_.globalName;
}

/// Puts the list into the documents, which may name entries anew, and remembers one paper.
void PaperEditor::store(std::size_t index) {
    file_.config().setCustomPaperSizes(list_);
    file_.config().getCustomPaperSizes(list_);
    paper_ = list_[index];
}

EditResult PaperEditor::find(const std::wstring& name) {
    const auto matching = [&](auto equal) {
        std::vector<std::size_t> found;
        for (std::size_t index = 0; index < list_.size(); ++index) {
            if (equal(list_[index].localName, name) || equal(list_[index].globalName, name)) {
                found.push_back(index);
            }
        }
        return found;
    };
    std::vector<std::size_t> found =
        matching([](const std::wstring& one, const std::wstring& other) { return one == other; });
    if (found.empty()) {
        found = matching(ut::equalNoCase);
    }
    if (found.size() == 1) {
        found_ = found.front();
        return {};
    }
    EditRefusal refusal{EditFault::NotFound, "there is no custom paper " + quoted(name), name, {}};
    if (found.empty()) {
        for (const CustomPaperSize& paper : list_) {
            refusal.present.push_back(paper.localName);
        }
        return refusal;
    }
    refusal.fault = EditFault::Ambiguous;
    refusal.reason = "several papers have this name; take the one you mean from:";
    for (const std::size_t index : found) {
        refusal.reason += ' ' + quoted(list_[index].globalName);
        refusal.present.push_back(list_[index].globalName);
    }
    return refusal;
}

/// Why the paper at `own` cannot have the name. Papers are found without regard to case: one of two
/// that differ in case alone could not be reached.
EditResult PaperEditor::checkName(const std::wstring& name, std::size_t own) const {
    if (std::string fault = nameFault(name); !fault.empty()) {
        return refuse(EditFault::NameInvalid, std::move(fault), name);
    }
    for (std::size_t index = 0; index < list_.size(); ++index) {
        const CustomPaperSize& paper = list_[index];
        for (const std::wstring& taken : {paper.localName, paper.globalName}) {
            if (index != own && ut::equalNoCase(taken, name)) {
                return refuse(EditFault::NameTaken,
                              "there is a paper " + quoted(taken) + " already", name);
            }
        }
    }
    return {};
}

EditResult PaperEditor::checkShape(const CustomPaperSize& paper) const {
    double width = 0;
    double height = 0;
    file_.largestPaper(width, height);
    const auto shown = [&](double length) {
        return paper_units::converted(length, paper.units, kMillimeters);
    };
    std::string fault =
        sideFault("width", shown(paper.width), shown(paper.left), shown(paper.right), width);
    if (fault.empty()) {
        fault =
            sideFault("height", shown(paper.height), shown(paper.bottom), shown(paper.top), height);
    }
    return fault.empty() ? EditResult() : refuse(EditFault::SizeInvalid, std::move(fault));
}

}  // namespace platen

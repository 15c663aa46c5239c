#include <wx/string.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <platen/custom_papers.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/paper_sizes.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands.h"
#include "tools/platen/paper_file.h"
#include "tools/platen/paper_list.h"

namespace platen {
namespace {

using enum OdDbPlotSettings::PlotPaperUnits;

/// Changes the papers of one file. The operations return why they cannot be done, for people; the
/// file is as it was until `save`.
class PaperEdit {
public:
    PaperEdit(const PaperOptions& options, PaperFile& file)
        : options_(options), file_(file), papers_(&file.config()) {
        papers_.load();
        file.config().getCustomPaperSizes(list_);
    }

    std::string apply() {
        if (!ut::decodeUtf8(options_.name, name_) || !ut::decodeUtf8(options_.newName, newName_)) {
            return "names must be UTF-8";
        }
        switch (options_.action) {
            case PaperAction::Add:
                return add();
            case PaperAction::Remove:
                return remove();
            case PaperAction::Rename:
                return rename();
            case PaperAction::Resize:
                return resize();
        }
        return {};
    }

    ExitCode save(const Console& console) {
        papers_.save();
        // A paper that the configuration is set to stays the size that the list says.
        if (options_.action == PaperAction::Resize && isCurrent()) {
            bool changed = false;
            file_.config().setPaperSize(index_, false, changed);
        }
        const ExitCode saved = file_.save(console);
        if (saved == ExitCode::Error) {
            return saved;
        }
        if (options_.action == PaperAction::Remove) {
            console.out << "removed " << inWords(list_[index_]) << '\n';
            return isCurrent() ? worse(saved, warn(console, options_.file,
                                                   "the configuration is still set to this paper"))
                               : saved;
        }
        std::vector<CustomPaperSize> now;
        file_.config().getCustomPaperSizes(now);
        const bool added = options_.action == PaperAction::Add;
        console.out << (added ? "added " : "now ") << inWords(now[added ? now.size() - 1 : index_])
                    << '\n';
        return saved;
    }

private:
    static std::string inWords(const CustomPaperSize& paper) {
        return printable('"' + ut::encodeUtf8(paper.localName) +
                         "\": " + sizeInWords(shown(paper)));
    }

    bool isCurrent() const {
        return file_.isConfiguration() &&
               file_.config().media.size.name == list_[index_].globalName;
    }

    /// The paper of that name, exactly or else ignoring case.
    std::string find() {
        const auto matching = [&](auto equal) {
            std::vector<unsigned> found;
            for (unsigned index = 0; index < list_.size(); ++index) {
                if (equal(list_[index].localName, name_) || equal(list_[index].globalName, name_)) {
                    found.push_back(index);
                }
            }
            return found;
        };
        std::vector<unsigned> found = matching(
            [](const std::wstring& one, const std::wstring& other) { return one == other; });
        if (found.empty()) {
            found = matching(ut::equalNoCase);
        }
        if (found.empty()) {
            std::vector<std::wstring> names;
            for (const CustomPaperSize& paper : list_) {
                names.push_back(paper.localName);
            }
            return "there is no custom paper \"" + options_.name + '"' +
                   suggestion(name_, names,
                              names.empty() ? "there are none" : "platen papers FILE lists them");
        }
        if (found.size() > 1) {
            std::string reason = "several papers have this name; take the one you mean from:";
            for (const unsigned index : found) {
                reason += " \"" + ut::encodeUtf8(list_[index].globalName) + '"';
            }
            return reason;
        }
        index_ = found.front();
        return {};
    }

    std::string add() {
        if (const std::string fault = paperNameFault(name_); !fault.empty()) {
            return fault;
        }
        if (papers_.isDuplicateName(wxString(name_))) {
            return "there is a paper \"" + options_.name +
                   "\" already; platen paper resize changes it";
        }
        const bool raster = CPlotCfg3::isBuiltInImage(&file_.config());
        papers_.setDefaultUnits(
            paperUnits(options_.units).value_or(raster ? kPixels : kMillimeters));
        papers_.append(wxString(name_));
        index_ = papers_.size() - 1;
        return setLengths();
    }

    std::string remove() {
        const std::string fault = find();
        if (fault.empty()) {
            papers_.remove(index_);
        }
        return fault;
    }

    std::string rename() {
        std::string fault = find();
        if (fault.empty()) {
            fault = paperNameFault(newName_);
        }
        if (!fault.empty()) {
            return fault;
        }
        for (unsigned index = 0; index < list_.size(); ++index) {
            if (index != index_ &&
                (list_[index].localName == newName_ || list_[index].globalName == newName_)) {
                return "there is a paper \"" + options_.newName + "\" already";
            }
        }
        papers_.setName(index_, wxString(newName_));
        return {};
    }

    std::string resize() {
        if (const std::string fault = find(); !fault.empty()) {
            return fault;
        }
        const std::int32_t own = list_[index_].units;
        const bool known = own == kInches || own == kPixels;
        papers_.setDefaultUnits(
            paperUnits(options_.units)
                .value_or(known ? static_cast<wut::CustomPapers::Units>(own) : kMillimeters));
        return setLengths();
    }

    std::string setLengths() {
        const std::optional<PaperSize> size = paperSize(options_.size);
        if (!size) {
            return '"' + options_.size +
                   "\" is no size; write WIDTHxHEIGHT with decimal points, such as 914x5000.5";
        }
        papers_.setSize(index_, size->width, size->height);
        if (!options_.margins.empty()) {
            const std::optional<PaperMargins> margins = paperMargins(options_.margins);
            if (!margins) {
                return '"' + options_.margins +
                       "\" are no margins; write LEFT,BOTTOM,RIGHT,TOP, such as 5,10,5,10";
            }
            papers_.setLeftMargin(index_, margins->left);
            papers_.setBottomMargin(index_, margins->bottom);
            papers_.setRightMargin(index_, margins->right);
            papers_.setTopMargin(index_, margins->top);
        }
        papers_.setDefaultUnits(kMillimeters);
        const std::string fault =
            sideFault("width", papers_.getWidth(index_), papers_.getLeftMargin(index_),
                      papers_.getRightMargin(index_), limits().width);
        return !fault.empty()
                   ? fault
                   : sideFault("height", papers_.getHeight(index_), papers_.getBottomMargin(index_),
                               papers_.getTopMargin(index_), limits().height);
    }

    PaperSize limits() const {
        PaperSize limits;
        file_.largestPaper(limits.width, limits.height);
        return limits;
    }

    /// What is wrong with one side of a paper, in millimetres or pixels.
    static std::string sideFault(const char* side, double length, double before, double behind,
                                 double limit) {
        constexpr double shortest = 0.001;
        constexpr double longest = 1e6;
        const double largest = limit > 0 ? limit : longest;
        const std::string it = std::string("the ") + side;
        if (length < shortest) {
            return it + " is not positive";
        }
        if (length > largest) {
            return it + " is " + ut::formatFixedAscii(length, 2) + " and the device takes " +
                   ut::formatFixedAscii(largest, 2) + " (millimetres or pixels) at most";
        }
        if (before < 0 || behind < 0) {
            return "a margin is negative";
        }
        return before + behind < length ? "" : "the margins leave nothing of " + it;
    }

    const PaperOptions& options_;
    PaperFile& file_;
    wut::CustomPapers papers_;
    /// The same papers, as they were.
    std::vector<CustomPaperSize> list_;
    std::wstring name_;
    std::wstring newName_;
    unsigned index_ = 0;
};

}  // namespace

ExitCode paper(const PaperOptions& options, const Console& console) {
    PaperFile file;
    const ExitCode opened = file.open(options.file, PaperFile::Purpose::Edit, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    PaperEdit edit(options, file);
    if (const std::string fault = edit.apply(); !fault.empty()) {
        return fail(console, options.file, "nothing was written: " + fault);
    }
    return worse(opened, edit.save(console));
}

}  // namespace platen

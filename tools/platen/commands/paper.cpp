#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/custom_papers.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/paper_sizes.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/paper_file.h"
#include "tools/platen/paper_list.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(FILE is a plot configuration or plot model parameters (PMP). New papers go into the
PMP that the configuration names; without one a PMP is made beside it (in the folder PMP, if there
is one there). Names are found without regard to case.

Examples:
  platen paper add a.pc3 --name "Long roll" --size 914x5000 --units mm
  platen paper add a.pc3 --name "Card" --size 3.5x2 --units in --margins 0.1,0.1,0.1,0.1
  platen paper resize a.pc3 --name "long roll" --size 914x7000
  platen paper rename a.pmp --name "Long roll" --to "Roll 914"
  platen paper remove a.pmp --name Card)";

enum class PaperAction { Add, Remove, Rename, Resize };

struct PaperOptions {
    PaperAction action = PaperAction::Add;
    std::string file;
    std::string name;
    std::string newName;
    /// "WIDTHxHEIGHT"
    std::string size;
    /// "mm", "in", "px"; empty for the paper's own or what suits the device.
    std::string units;
    /// "LEFT,BOTTOM,RIGHT,TOP"; empty: none, or those that there are.
    std::string margins;
};

using enum OdDbPlotSettings::PlotPaperUnits;

/// Changes the papers of one file. The operations return why they cannot be done, for people; the
/// file is as it was until `save`.
class PaperEdit {
public:
    PaperEdit(const PaperOptions& options, platen::PaperFile& file)
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
                         "\": " + sizeInWords(platen::shown(paper)));
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
                   arguments::suggestion(
                       name_, names,
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

    /// Why no paper but the one at `own` may have the name: papers are found by their names without
    /// regard to case, and one of two could not be reached. Empty when it may.
    std::string nameTaken(const std::wstring& name, std::size_t own) const {
        for (std::size_t index = 0; index < list_.size(); ++index) {
            const CustomPaperSize& paper = list_[index];
            for (const std::wstring& taken : {paper.localName, paper.globalName}) {
                if (index != own && ut::equalNoCase(taken, name)) {
                    return "there is a paper \"" + ut::encodeUtf8(taken) + "\" already";
                }
            }
        }
        return {};
    }

    std::string add() {
        if (const std::string fault = arguments::paperNameFault(name_); !fault.empty()) {
            return fault;
        }
        if (const std::string taken = nameTaken(name_, list_.size()); !taken.empty()) {
            return taken + "; platen paper resize changes it";
        }
        const bool raster = CPlotCfg3::isBuiltInImage(&file_.config());
        papers_.setDefaultUnits(
            arguments::paperUnits(options_.units).value_or(raster ? kPixels : kMillimeters));
        papers_.append(name_);
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
            fault = arguments::paperNameFault(newName_);
        }
        if (!fault.empty()) {
            return fault;
        }
        if (std::string taken = nameTaken(newName_, index_); !taken.empty()) {
            return taken;
        }
        papers_.setName(index_, newName_);
        return {};
    }

    std::string resize() {
        if (const std::string fault = find(); !fault.empty()) {
            return fault;
        }
        const std::int32_t own = list_[index_].units;
        const bool known = own == kInches || own == kPixels;
        papers_.setDefaultUnits(
            arguments::paperUnits(options_.units)
                .value_or(known ? static_cast<wut::CustomPaperList::Units>(own) : kMillimeters));
        return setLengths();
    }

    std::string setLengths() {
        const std::optional<arguments::PaperSize> size = arguments::paperSize(options_.size);
        if (!size) {
            return '"' + options_.size +
                   "\" is no size; write WIDTHxHEIGHT with decimal points, such as 914x5000.5";
        }
        papers_.set(index_, &CustomPaperSize::width, size->width);
        papers_.set(index_, &CustomPaperSize::height, size->height);
        if (!options_.margins.empty()) {
            const std::optional<arguments::PaperMargins> margins =
                arguments::paperMargins(options_.margins);
            if (!margins) {
                return '"' + options_.margins +
                       "\" are no margins; write LEFT,BOTTOM,RIGHT,TOP, such as 5,10,5,10";
            }
            papers_.set(index_, &CustomPaperSize::left, margins->left);
            papers_.set(index_, &CustomPaperSize::bottom, margins->bottom);
            papers_.set(index_, &CustomPaperSize::right, margins->right);
            papers_.set(index_, &CustomPaperSize::top, margins->top);
        }
        papers_.setDefaultUnits(kMillimeters);
        const std::string fault =
            sideFault("width", papers_.get(index_, &CustomPaperSize::width),
                      papers_.get(index_, &CustomPaperSize::left),
                      papers_.get(index_, &CustomPaperSize::right), limits().width);
        return !fault.empty()
                   ? fault
                   : sideFault("height", papers_.get(index_, &CustomPaperSize::height),
                               papers_.get(index_, &CustomPaperSize::bottom),
                               papers_.get(index_, &CustomPaperSize::top), limits().height);
    }

    arguments::PaperSize limits() const {
        arguments::PaperSize limits;
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
    platen::PaperFile& file_;
    wut::CustomPaperList papers_;
    /// The same papers, as they were.
    std::vector<CustomPaperSize> list_;
    std::wstring name_;
    std::wstring newName_;
    unsigned index_ = 0;
};

/// Edits the custom papers of a configuration or of plot model parameters.
ExitCode run(const PaperOptions& options, const Console& console) {
    platen::PaperFile file;
    const ExitCode opened = file.open(options.file, platen::PaperFile::Purpose::Edit, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    PaperEdit edit(options, file);
    if (const std::string fault = edit.apply(); !fault.empty()) {
        return fail(console, options.file, "nothing was written: " + fault);
    }
    return worse(opened, edit.save(console));
}

using SharedOptions = std::shared_ptr<PaperOptions>;

CLI::App* addAction(CLI::App* command, const SharedOptions& options, PaperAction action,
                    const char* word, const char* purpose, const char* nameHelp) {
    CLI::App* added = command->add_subcommand(word, purpose);
    added->group("Actions")->footer(help);
    arguments::takeText(added->add_option("FILE", options->file, "Configuration or parameters"))
        ->required();
    arguments::takeText(added->add_option("--name", options->name, nameHelp))
        ->type_name("NAME")
        ->required();
    added->parse_complete_callback([options, action] { options->action = action; });
    return added;
}

void addLengths(CLI::App* action, const SharedOptions& options) {
    action->add_option("--size", options->size, "Width and height")->type_name("WxH")->required();
    action
        ->add_option("--units", options->units,
                     "Of size and margins: mm, in or px (a new paper: mm, or px for images; "
                     "an old one: its own)")
        ->check(arguments::oneOf({"mm", "in", "px"}));
    action->add_option("--margins", options->margins, "Left, bottom, right, top")
        ->type_name("L,B,R,T");
}

}  // namespace

CommandEntry addPaper(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "paper", "Edit custom papers of a configuration or its parameters", help);
    const auto options = std::make_shared<PaperOptions>();
    command->require_subcommand(1);
    const auto add = [&](PaperAction action, const char* word, const char* purpose,
                         const char* nameHelp) {
        return addAction(command, options, action, word, purpose, nameHelp);
    };
    addLengths(add(PaperAction::Add, "add", "Add a paper", "Name of the new paper"), options);
    add(PaperAction::Remove, "remove", "Remove a paper", "Name of the paper");
    arguments::takeText(add(PaperAction::Rename, "rename", "Rename a paper", "Name of the paper")
                            ->add_option("--to", options->newName, "New name"))
        ->type_name("NAME")
        ->required();
    addLengths(
        add(PaperAction::Resize, "resize", "Change the size of a paper", "Name of the paper"),
        options);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

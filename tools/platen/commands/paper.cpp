#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include <platen/edit.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/paper_sizes.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/paper_file.h"
#include "tools/platen/words/paper_list.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(FILE is a plot configuration or plot model parameters (PMP). New papers go into the
PMP that the configuration names; without one a PMP is made beside it (in the folder PMP, if there
is one there). Names are found without regard to case.

Examples:
  platen paper add a.pc3 --name "Long roll" --size 914x5000 --units mm
  platen paper add a.pc3 --name "Card" --size 3.5x2 --units in --margins 0.1,0.1,0.1,0.1
  platen paper resize a.pc3 --name "long roll" --size 914x4000
  platen paper rename a.pmp --name "Long roll" --to "Roll 914"
  platen paper remove a.pmp --name Card)";

enum class PaperAction { Add, Remove, Rename, Resize };

struct PaperOptions {
    PaperAction action = PaperAction::Add;
    std::string file;
    files::Selection selection;
    std::string name;
    std::string newName;
    /// "WIDTHxHEIGHT"
    std::string size;
    /// "mm", "in", "px"; empty for the paper's own or what suits the device.
    std::string units;
    /// "LEFT,BOTTOM,RIGHT,TOP"; empty: none, or those that there are.
    std::string margins;
};

std::string inWords(const CustomPaperSize& paper) {
    return printable('"' + ut::encodeUtf8(paper.localName) +
                     "\": " + words::sizeInWords(platen::shown(paper)));
}

/// Reads size, units and margins. Says why they are none; empty when they are.
std::string shapeOf(const PaperOptions& options, platen::PaperShape& shape) {
    const std::optional<arguments::PaperSize> size = arguments::paperSize(options.size);
    if (!size) {
        return '"' + options.size +
               "\" is no size; write WIDTHxHEIGHT with decimal points, such as 914x5000.5";
    }
    shape.width = size->width;
    shape.height = size->height;
    shape.units = arguments::paperUnits(options.units);
    if (!options.margins.empty()) {
        shape.margins = arguments::paperMargins(options.margins);
        if (!shape.margins) {
            return '"' + options.margins +
                   "\" are no margins; write LEFT,BOTTOM,RIGHT,TOP, such as 5,10,5,10";
        }
    }
    return {};
}

/// Why the change was refused, and what to do about it; empty when it was made.
std::string reasonOf(const platen::EditResult& done) {
    if (done) {
        return {};
    }
    std::string reason = done->reason;
    if (done->fault == platen::EditFault::NotFound) {
        reason += arguments::suggestion(
            done->wanted, done->present,
            done->present.empty() ? "there are none" : "platen papers FILE lists them");
    }
    return reason;
}

/// Says why the change cannot be made; empty when it was.
std::string apply(const PaperOptions& options, platen::PaperEditor& editor) {
    std::wstring name;
    std::wstring newName;
    if (!ut::decodeUtf8(options.name, name) || !ut::decodeUtf8(options.newName, newName)) {
        return "names must be UTF-8";
    }
    if (options.action == PaperAction::Remove) {
        return reasonOf(editor.remove(name));
    }
    if (options.action == PaperAction::Rename) {
        return reasonOf(editor.rename(name, newName));
    }
    platen::PaperShape shape;
    if (std::string fault = shapeOf(options, shape); !fault.empty()) {
        return fault;
    }
    if (options.action == PaperAction::Resize) {
        return reasonOf(editor.resize(name, shape));
    }
    const platen::EditResult done = editor.add(name, shape);
    const bool taken = !done && done->fault == platen::EditFault::NameTaken;
    return reasonOf(done) + (taken ? "; platen paper resize changes it" : "");
}

ExitCode editIn(const std::string& path, const PaperOptions& options, const Console& console) {
    platen::PaperFile file;
    const ExitCode opened =
        files::openPapers(path, file, platen::PaperFile::Purpose::Edit, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    platen::PaperEditor editor(file);
    if (const std::string fault = apply(options, editor); !fault.empty()) {
        return fail(console, path, "nothing was written: " + fault);
    }
    const ExitCode saved = worse(opened, files::savePapers(path, file, console));
    if (saved == ExitCode::Error) {
        return saved;
    }
    const bool removed = options.action == PaperAction::Remove;
    console.out << (removed                              ? "removed "
                    : options.action == PaperAction::Add ? "added "
                                                         : "now ")
                << inWords(editor.paper()) << '\n';
    return removed && editor.isCurrent()
               ? worse(saved, warn(console, path, "the configuration is still set to this paper"))
               : saved;
}

/// Edits the custom papers of configurations or of plot model parameters.
ExitCode run(const PaperOptions& options, const Console& console) {
    const files::Selected selected = files::select(options.file, options.selection, console);
    // A configuration writes the PMP that it names, which another one may name, too.
    return files::forEachFile(
        selected, {.doing = "changing", .oneThread = true}, console,
        [&](const std::string& file, const Console& own) { return editIn(file, options, own); });
}

using SharedOptions = std::shared_ptr<PaperOptions>;

CLI::App* addAction(CLI::App* command, const SharedOptions& options, PaperAction action,
                    const char* word, const char* purpose, const char* nameHelp) {
    CLI::App* added = command->add_subcommand(word, purpose);
    added->group("Actions")->footer(help);
    arguments::takeText(
        added->add_option("FILE", options->file,
                          "Configuration or parameters, or @LIST; with -r a folder"))
        ->required();
    files::addBatch(added, options->selection);
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

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(A PATH is what platen get takes. An item keeps its type; a new one names it:
":str", ":num", ":bool" (TRUE or FALSE), ":bin" (hexadecimal) or ":block" (no value). Everything
else stays as it was: unknown items, their order, the spelling of numbers, the version of the
file. Either all changes are made or none.

Examples:
  platen set a.pc3 media/number_of_copies=2 -o b.pc3
  platen set a.pc3 meta/config_description="Office, 2nd floor" --in-place=.bak
  platen set a.pc3 vendor:block vendor/level:num=3 vendor/key:bin=00FF --in-place
  platen set -r plotters media/number_of_copies=1 --in-place=.bak
  platen set a.pc3 --delete vendor/key --delete custom --in-place)";

struct SetOptions {
    std::string file;
    files::Selection selection;
    /// "PATH=VALUE", "PATH:TYPE=VALUE" or "PATH:block".
    std::vector<std::string> assignments;
    /// Paths of items to delete, before anything is assigned.
    std::vector<std::string> deleted;
    std::string out;
    std::uint64_t maxBody = files::usualMaxBody;
    bool inPlace = false;
    /// Say what would change.
    bool dryRun = false;
    /// The old file is kept under its name and this, unless it is empty.
    std::string backupSuffix;
};

/// What is wrong with the options taken together; empty when nothing is.
std::string usageFault(const SetOptions& options) {
    if (options.inPlace && options.file == files::standardStream) {
        return "standard input cannot be changed in place; write the result with -o OUT";
    }
    if (options.inPlace == !options.out.empty() && !options.dryRun) {
        return "say where the result goes: either -o OUT or --in-place";
    }
    const bool leadsElsewhere = options.backupSuffix.find_first_of("/\\") != std::string::npos;
    return leadsElsewhere ? "the suffix of --in-place only ends a name; leave slashes out" : "";
}

/// Why a change was refused, and what to do about it; empty when it was made.
std::string reasonOf(const platen::EditResult& done) {
    if (done) {
        return {};
    }
    const auto withNames = [&](const char* remedy) {
        return done->reason + remedy +
               arguments::suggestion(done->wanted, done->present, "platen get shows what is there");
    };
    switch (done->fault) {
        case platen::EditFault::NotFound:
            return withNames("");
        case platen::EditFault::BlockNotFound:
            return withNames("; a new block is PATH:block");
        case platen::EditFault::TypeMissing:
            return withNames(
                "; a new item names its type behind the path: :str, :num, :bool, :bin "
                "(hexadecimal) or :block");
        case platen::EditFault::TypeKept:
            return done->reason + "; delete it in the same command (--delete) to give it another";
        default:
            return done->reason;
    }
}

/// Makes all the changes, saying of each that cannot be made why. False when there was one.
bool edit(const std::string& file, const SetOptions& options, platen::ItemEditor& editor,
          const Console& console) {
    bool done = true;
    const auto note = [&](const std::string& what, const std::string& fault) {
        if (!fault.empty()) {
            fail(console, file + ": " + what, fault);
            done = false;
        }
    };
    std::wstring wide;
    for (const std::string& path : options.deleted) {
        note("--delete " + path,
             ut::decodeUtf8(path, wide) ? reasonOf(editor.remove(wide)) : "the path is not UTF-8");
    }
    for (const std::string& assignment : options.assignments) {
        note(assignment, ut::decodeUtf8(assignment, wide) ? reasonOf(editor.assign(wide))
                                                          : "this is not UTF-8");
    }
    return done;
}

ExitCode store(const std::string& file, const SetOptions& options, platen::SourceFile& source,
               bool changed, const Console& console) {
    if (!options.inPlace) {
        return files::writeSource(source, changed, options.out, console);
    }
    if (!options.backupSuffix.empty()) {
        const std::string backup = file + options.backupSuffix;
        if (files::writeBytes(source.bytes(), backup, console) != ExitCode::Ok) {
            return ExitCode::Error;
        }
    }
    return changed ? files::writeSource(source, changed, file, console) : ExitCode::Ok;
}

ExitCode setIn(const std::string& file, const SetOptions& options, const Console& console) {
    platen::SourceFile source;
    if (!files::readSource(file, source, console, platen::readingUpTo(options.maxBody))) {
        return ExitCode::Error;
    }
    const ExitCode read = warn(console, file, source.input().report());
    const platen::DocumentState before = platen::documentState(source.input());
    platen::ItemEditor editor(*source.input().root());
    if (!edit(file, options, editor, console)) {
        return fail(console, file, "nothing was written");
    }
    const std::string lost = platen::lostDocument(before, platen::documentState(source.input()));
    if (options.dryRun) {
        console.out << printable(file)
                    << (editor.changed() ? ": would change\n" : ": stays as it is\n");
    }
    const ExitCode stored =
        options.dryRun ? ExitCode::Ok : store(file, options, source, editor.changed(), console);
    if (stored == ExitCode::Error || lost.empty()) {
        return worse(read, stored);
    }
    return worse(stored, warn(console, file, "after these changes " + lost));
}

/// Changes items of the raw tree.
ExitCode run(const SetOptions& options, const Console& console) {
    if (const std::string fault = usageFault(options); !fault.empty()) {
        return fail(console, options.file, fault);
    }
    const files::Selected selected = files::select(options.file, options.selection, console);
    if (selected.isBatch && !options.out.empty()) {
        return fail(console, options.file, "many files have no room in one OUT; add --in-place");
    }
    return files::forEachFile(
        selected, {.doing = "changing", .jobs = options.selection.jobs}, console,
        [&](const std::string& file, const Console& own) { return setIn(file, options, own); });
}

}  // namespace

CommandEntry addSet(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "set", "Change items of a file as they are stored", help);
    const auto options = std::make_shared<SetOptions>();
    arguments::takeText(
        command->add_option("FILE", options->file, "File, @LIST or -; with -r a folder"))
        ->required();
    arguments::takeText(command->add_option("PATH=VALUE", options->assignments,
                                            "Values; a new item is PATH:TYPE=VALUE or PATH:block"));
    arguments::takeText(
        command->add_option("--delete", options->deleted,
                            "Item to delete before values are set; may be repeated"))
        ->type_name("PATH")
        ->allow_extra_args(false);
    arguments::addOutput(command, options->out);
    arguments::addMaxBody(command, options->maxBody);
    files::addBatch(command, options->selection);
    command->add_flag("--dry-run", options->dryRun, "Say which files would change");
    // A flag whose value can only follow "=", so that it takes no argument for its own.
    const CLI::Option* inPlace =
        command->add_flag("--in-place", options->backupSuffix,
                          "Change FILE itself; --in-place=SUFFIX keeps the old file under "
                          "its name and SUFFIX");
    command->parse_complete_callback([options, inPlace] {
        constexpr const char* flagWithoutValue = "true";
        options->inPlace = inPlace->count() > 0;
        if (options->backupSuffix == flagWithoutValue) {
            options->backupSuffix.clear();
        }
    });
    return entryOf(command, options, run);
}

}  // namespace cli::commands

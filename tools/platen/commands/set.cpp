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
#include "tools/platen/files/destination.h"
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
    files::Destination destination;
    std::uint64_t maxBody = files::usualMaxBody;
};

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
    const ExitCode stored = files::storeChanged(file, options.destination, source,
                                                *source.input().root(), editor.changed(), console);
    if (stored == ExitCode::Error || lost.empty()) {
        return worse(read, stored);
    }
    return worse(stored, warn(console, file, "after these changes " + lost));
}

/// Changes items of the raw tree.
ExitCode run(const SetOptions& options, const Console& console) {
    return files::changeFiles(
        options.file, options.selection, options.destination, console,
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
    arguments::addMaxBody(command, options->maxBody);
    files::addBatch(command, options->selection);
    files::addDestination(command, options->destination);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/destination.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(CHANGES is what platen diff --json prints of two files. A change finds its place by
names (a style, a paper, a colour), and a line weight by its millimetres, so that it means the same
in other files. It is made where the file is as it was before the change; where the file is already
as after it, nothing is to do; everywhere else it does not fit, is listed with the reason, and the
file keeps what it has. Of folders and lists, the files of the kind that was compared are changed.

Exit codes: 0 all changes are there, 1 some did not fit, 2 an error.

Examples:
  platen diff a.ctb b.ctb --json > thicker.json
  platen apply thicker.json other.ctb --dry-run
  platen apply thicker.json other.ctb --in-place=.bak
  platen apply thicker.json -r plotters --in-place=.bak)";

struct ApplyOptions {
    std::string changes;
    files::Selection selection;
    files::Destination destination;
    std::uint64_t maxBody = files::usualMaxBody;
};

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + (count == 1 ? " change " : " changes ") + what;
}

bool isTable(platen::FileKind kind) {
    return kind == platen::FileKind::Ctb || kind == platen::FileKind::Stb;
}

bool readChanges(const ApplyOptions& options, platen::ChangeList& changes, const Console& console) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    const ut::SystemError error =
        ut::readFile(ut::decodePath(options.changes), options.maxBody, bytes, tooLarge);
    if (error || tooLarge) {
        fail(console, options.changes,
             tooLarge ? "the file is too large; allow more with --max-body" : error.message());
        return false;
    }
    const platen::EditResult done = platen::readChanges(bytes.view(), changes);
    if (!done) {
        fail(console, options.changes, done->reason);
    }
    return static_cast<bool>(done);
}

/// Folders hold files that the changes are not meant for; whoever names a file means it.
bool isMeant(platen::FileKind kind, const std::string& file, const platen::ChangeList& changes,
             const ApplyOptions& options) {
    return changes.kind == platen::FileKind::Pia || kind == changes.kind ||
           (isTable(kind) && isTable(changes.kind)) ||
           std::ranges::find(options.selection.named, file) != options.selection.named.end();
}

ExitCode tellMisfits(const std::string& file, const platen::ChangeList& changes,
                     const platen::ApplyResult& applied, const Console& console) {
    constexpr std::size_t shown = 50;
    const std::vector<std::string> lines = platen::describeMisfits(changes.changes, applied);
    for (std::size_t index = 0; index < std::min(lines.size(), shown); ++index) {
        warn(console, file, "does not fit: " + lines[index]);
    }
    if (lines.size() > shown) {
        warn(console, file, "and " + std::to_string(lines.size() - shown) + " more");
    }
    return applied.misfits == 0 ? ExitCode::Ok : ExitCode::Difference;
}

ExitCode change(const std::string& file, const platen::ChangeList& changes,
                const ApplyOptions& options, const Console& console) {
    platen::SourceFile source;
    if (!files::readSource(file, source, console, platen::readingUpTo(options.maxBody))) {
        return ExitCode::Error;
    }
    const platen::DocumentState before = platen::documentState(source.input());
    if (!isMeant(before.kind, file, changes, options)) {
        return ExitCode::Ok;
    }
    PiaBlock& root = *source.input().root();
    const platen::ApplyResult applied = platen::applyChanges(root, changes.changes);
    const std::string lost = platen::lostDocument(before, platen::documentState(source.input()));
    if (!lost.empty()) {
        return fail(console, file, lost + "; nothing was written");
    }
    const bool isDry = options.destination.dryRun;
    if (!isDry) {
        const ExitCode stored =
            files::storeChanged(file, options.destination, source, root, applied.made > 0, console);
        if (stored == ExitCode::Error) {
            return stored;
        }
    }
    files::besideData(options.destination.out, console).out
        << printable(file) << ": " << counted(applied.made, isDry ? "would be made" : "made")
        << ", " << applied.alreadyThere << " already there, " << applied.misfits
        << (applied.misfits == 1 ? " does not fit\n" : " do not fit\n");
    return tellMisfits(file, changes, applied, console);
}

/// Makes the differences of two files in others.
ExitCode run(const ApplyOptions& options, const Console& console) {
    platen::ChangeList changes;
    if (!readChanges(options, changes, console)) {
        return ExitCode::Error;
    }
    return files::changeFiles(options.selection, options.destination, console,
                              [&](const std::string& file, const Console& own) {
                                  return change(file, changes, options, own);
                              });
}

}  // namespace

CommandEntry addApply(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "apply", "Make the changes of a diff in other files", help);
    const auto options = std::make_shared<ApplyOptions>();
    arguments::takeText(
        command->add_option("CHANGES", options->changes, "What platen diff --json printed"))
        ->required();
    files::addFiles(command, options->selection);
    files::addDestination(command, options->destination);
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

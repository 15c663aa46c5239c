#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <platen/compare.h>
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

Where CHANGES is a plotter file itself, each FILE becomes as it is, whatever differs.

Exit codes: 0 all changes are there, 1 some did not fit, 2 an error.

Examples:
  platen diff a.ctb b.ctb --json > thicker.json
  platen apply thicker.json other.ctb --dry-run
  platen apply thicker.json other.ctb --in-place=.bak
  platen apply thicker.json -r plotters --in-place=.bak
  platen apply standard.ctb site.ctb --in-place=.bak       as the standard is)";

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

/// What is to be done to each file.
struct Changes {
    platen::ChangeList list;
    /// The bytes of the plotter file that files become like, instead of a list; otherwise empty.
    ut::ByteBuffer model;
};

bool readChanges(const ApplyOptions& options, Changes& changes, const Console& console) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    const ut::SystemError error =
        ut::readFile(ut::decodePath(options.changes), options.maxBody, bytes, tooLarge);
    if (error || tooLarge) {
        fail(console, options.changes,
             tooLarge ? "the file is too large; allow more with --max-body" : error.message());
        return false;
    }
    const platen::EditResult done = platen::readChanges(bytes.view(), changes.list);
    if (done) {
        return true;
    }
    PiaInput model;
    const bool isFile = model.openBytes(bytes.view(), platen::readingUpTo(options.maxBody));
    changes.list.kind = isFile ? platen::recognise(model).kind : platen::FileKind::Pia;
    if (changes.list.kind == platen::FileKind::Pia) {
        fail(console, options.changes,
             done->reason + (isFile ? ", nor a document that is known" : ", nor a plotter file"));
        return false;
    }
    changes.model = std::move(bytes);
    return true;
}

/// The differences from the file to the model; nothing when it cannot become like that.
std::optional<platen::ChangeList> changesTo(const Changes& changes, const PiaInput& file,
                                            platen::FileKind kind, const ApplyOptions& options) {
    // Trees belong to one thread, so that each file is compared with one of its own.
    PiaInput model;
    const bool isLike = kind == changes.list.kind || (isTable(kind) && isTable(changes.list.kind));
    if (!isLike || !model.openBytes(changes.model.view(), platen::readingUpTo(options.maxBody))) {
        return std::nullopt;
    }
    return platen::ChangeList{kind, platen::compare(file, model).differences};
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

ExitCode change(const std::string& file, const Changes& given, const ApplyOptions& options,
                const Console& console) {
    platen::SourceFile source;
    if (!files::readSource(file, source, console, platen::readingUpTo(options.maxBody))) {
        return ExitCode::Error;
    }
    const platen::DocumentState before = platen::documentState(source.input());
    if (!isMeant(before.kind, file, given.list, options)) {
        return ExitCode::Ok;
    }
    std::optional<platen::ChangeList> own;
    if (given.model.size() != 0) {
        own = changesTo(given, source.input(), before.kind, options);
        if (!own) {
            return fail(console, file,
                        std::string("a ") + platen::kindName(before.kind) + " cannot become as a " +
                            platen::kindName(given.list.kind) + " is");
        }
    }
    const platen::ChangeList& changes = own ? *own : given.list;
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
    Changes changes;
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
    arguments::takeText(command->add_option("CHANGES", options->changes,
                                            "What platen diff --json printed, or a plotter file"))
        ->required();
    files::addFiles(command, options->selection);
    files::addDestination(command, options->destination);
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

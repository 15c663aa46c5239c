#include <CLI/CLI.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include <platen/edit.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(OURS and THEIRS began as BASE. What THEIRS has changed is put into OURS, by meaning:
changes of different styles, papers and keys never meet. Where both have changed one place in
different ways, OURS stays and the conflict is listed. Without -o, OURS is replaced in one step; it
keeps its form. An empty BASE stands for a file that both have added.

Exit codes: 0 merged, 1 merged but for the conflicts, 2 an error and nothing was written.

As a merge driver of git (docs/git.md says more):
  git config merge.platen.driver "platen merge %O %A %B --path %P"
  echo "*.ctb merge=platen" >> .gitattributes

Examples:
  platen merge base.ctb ours.ctb theirs.ctb -o merged.ctb)";

struct MergeOptions {
    std::string base;
    std::string ours;
    std::string theirs;
    /// Empty: `ours`.
    std::string out;
    /// What messages call the file; empty: its own name.
    std::string shown;
    std::uint64_t maxBody = files::usualMaxBody;
};

/// Why these are no states of one file; empty when they are.
std::string mismatch(platen::FileKind base, platen::FileKind ours, platen::FileKind theirs) {
    const auto family = [](platen::FileKind kind) {
        return kind == platen::FileKind::Stb ? platen::FileKind::Ctb : kind;
    };
    for (const platen::FileKind kind : {base, theirs}) {
        if (family(kind) != family(ours)) {
            return std::string("a ") + platen::kindName(ours) + " and a " + platen::kindName(kind) +
                   " cannot be merged";
        }
    }
    return {};
}

ExitCode tell(const std::string& name, const platen::MergeResult& merged, const Console& console) {
    for (const std::string& line : platen::describe(merged.conflicts)) {
        fail(console, name, "conflict: " + line);
    }
    console.out << printable(name) << ": "
                << (merged.taken == 1 ? "1 change" : std::to_string(merged.taken) + " changes")
                << " taken, " << merged.conflicts.size()
                << (merged.conflicts.size() == 1 ? " conflict\n" : " conflicts\n");
    return merged.conflicts.empty() ? ExitCode::Ok : ExitCode::Difference;
}

/// Merges two states of a file.
ExitCode run(const MergeOptions& options, const Console& console) {
    const std::string& name = options.shown.empty() ? options.ours : options.shown;
    const PiaReadOptions reading = platen::readingUpTo(options.maxBody);
    platen::SourceFile base;
    platen::SourceFile ours;
    platen::SourceFile theirs;
    const bool readBase = files::readSource(options.base, base, console, reading);
    const bool readOurs = files::readSource(options.ours, ours, console, reading);
    if (!files::readSource(options.theirs, theirs, console, reading) || !readBase || !readOurs) {
        return ExitCode::Error;
    }
    const platen::DocumentState before = platen::documentState(ours.input());
    const bool isNew = base.input().root()->items.empty();
    const platen::FileKind baseKind = isNew ? before.kind : platen::recognise(base.input()).kind;
    if (const std::string why =
            mismatch(baseKind, before.kind, platen::recognise(theirs.input()).kind);
        !why.empty()) {
        return fail(console, name, why);
    }
    const platen::MergeResult merged =
        platen::merge(*base.input().root(), *ours.input().root(), *theirs.input().root());
    if (const std::string lost = platen::lostDocument(before, platen::documentState(ours.input()));
        !lost.empty()) {
        return fail(console, name, lost + "; nothing was written");
    }
    const std::string& out = options.out.empty() ? options.ours : options.out;
    // What was warned of has been said; for git, any other code is a conflict.
    const bool written =
        (merged.taken == 0 && options.out.empty()) ||
        files::writeSource(ours, merged.taken > 0, out, console) != ExitCode::Error;
    return written ? tell(name, merged, console) : ExitCode::Error;
}

}  // namespace

CommandEntry addMerge(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "merge", "Join two changed states of a file", help);
    const auto options = std::make_shared<MergeOptions>();
    arguments::takeText(command->add_option("BASE", options->base, "What both began with"))
        ->required();
    arguments::takeText(command->add_option("OURS", options->ours, "One state"))->required();
    arguments::takeText(command->add_option("THEIRS", options->theirs, "The other state"))
        ->required();
    arguments::addOutput(command, options->out);
    arguments::takeText(
        command->add_option("--path", options->shown, "What messages call the file"));
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

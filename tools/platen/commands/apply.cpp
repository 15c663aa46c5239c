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
#include "tools/platen/files/folder_pairs.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(CHANGES is what platen diff --json prints of two files. A change finds its place by
names (a style, a paper, a colour), and a line weight by its millimetres, so that it means the same
in other files. It is made where the file is as it was before the change; where the file is already
as after it, nothing is to do; everywhere else it does not fit, is listed with the reason, and the
file keeps what it has. Of folders, the plotter files of the kind that was compared are changed.

Exit codes: 0 all changes are there, 1 some did not fit, 2 an error.

Examples:
  platen diff a.ctb b.ctb --json > thicker.json
  platen apply thicker.json other.ctb --dry-run
  platen apply thicker.json other.ctb plotters)";

struct ApplyOptions {
    std::string changes;
    std::vector<std::string> files;
    bool dryRun = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + (count == 1 ? " change " : " changes ") + what;
}

bool isTable(platen::FileKind kind) {
    return kind == platen::FileKind::Ctb || kind == platen::FileKind::Stb;
}

class Application {
public:
    Application(const ApplyOptions& options, const Console& console)
        : options_(options), console_(console) {}

    ExitCode run() {
        if (!readChanges()) {
            return ExitCode::Error;
        }
        ExitCode worst = ExitCode::Ok;
        for (const std::string& name : options_.files) {
            if (!ut::folderExists(ut::decodePath(name))) {
                worst = worse(worst, change(name, false));
                continue;
            }
            const files::FileWalk walk = files::walkFiles(name);
            for (const files::FileWalk::Fault& fault : walk.faults) {
                worst = worse(worst, fail(console_, fault.path, fault.reason));
            }
            for (const std::string& file : walk.files) {
                if (files::isPlotterFile(file)) {
                    worst = worse(worst, change(file, true));
                }
            }
        }
        return worst;
    }

private:
    bool readChanges() {
        ut::ByteBuffer bytes;
        bool tooLarge = false;
        const ut::SystemError error =
            ut::readFile(ut::decodePath(options_.changes), options_.maxBody, bytes, tooLarge);
        if (error || tooLarge) {
            fail(console_, options_.changes,
                 tooLarge ? "the file is too large; allow more with --max-body" : error.message());
            return false;
        }
        const platen::EditResult done = platen::readChanges(bytes.view(), changes_);
        if (!done) {
            fail(console_, options_.changes, done->reason);
        }
        return static_cast<bool>(done);
    }

    /// Folders hold files that the changes are not meant for.
    bool isMeant(platen::FileKind kind) const {
        return changes_.kind == platen::FileKind::Pia || kind == changes_.kind ||
               (isTable(kind) && isTable(changes_.kind));
    }

    ExitCode change(const std::string& file, bool inFolder) {
        platen::SourceFile source;
        if (!files::readSource(file, source, console_, platen::readingUpTo(options_.maxBody))) {
            return ExitCode::Error;
        }
        const platen::DocumentState before = platen::documentState(source.input());
        if (inFolder && !isMeant(before.kind)) {
            return ExitCode::Ok;
        }
        const platen::ApplyResult applied =
            platen::applyChanges(*source.input().root(), changes_.changes);
        const std::string lost =
            platen::lostDocument(before, platen::documentState(source.input()));
        if (!lost.empty()) {
            return fail(console_, file, lost + "; nothing was written");
        }
        ExitCode worst = ExitCode::Ok;
        if (applied.made > 0 && !options_.dryRun) {
            worst = files::writeSource(source, true, file, console_);
            if (worst == ExitCode::Error) {
                return worst;
            }
        }
        console_.out << printable(file) << ": "
                     << counted(applied.made, options_.dryRun ? "would be made" : "made") << ", "
                     << applied.alreadyThere << " already there, " << applied.misfits
                     << (applied.misfits == 1 ? " does not fit\n" : " do not fit\n");
        return worse(worst, tellMisfits(file, applied));
    }

    ExitCode tellMisfits(const std::string& file, const platen::ApplyResult& applied) const {
        constexpr std::size_t shown = 50;
        const std::vector<std::string> lines = platen::describeMisfits(changes_.changes, applied);
        for (std::size_t index = 0; index < std::min(lines.size(), shown); ++index) {
            warn(console_, file, "does not fit: " + lines[index]);
        }
        if (lines.size() > shown) {
            warn(console_, file, "and " + std::to_string(lines.size() - shown) + " more");
        }
        return applied.misfits == 0 ? ExitCode::Ok : ExitCode::Difference;
    }

    const ApplyOptions& options_;
    const Console& console_;
    platen::ChangeList changes_;
};

/// Makes the differences of two files in others.
ExitCode run(const ApplyOptions& options, const Console& console) {
    return Application(options, console).run();
}

}  // namespace

CommandEntry addApply(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "apply", "Make the changes of a diff in other files", help);
    const auto options = std::make_shared<ApplyOptions>();
    arguments::takeText(
        command->add_option("CHANGES", options->changes, "What platen diff --json printed"))
        ->required();
    arguments::takeText(command->add_option("FILE", options->files, "Files and folders to change"))
        ->required();
    command->add_flag("--dry-run", options->dryRun, "Say what would be done, and write nothing");
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

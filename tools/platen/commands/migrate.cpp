#include <CLI/CLI.hpp>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/house.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/destination.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/source.h"
#include "tools/platen/printers/printer_moves.h"
#include "tools/platen/words/losses_text.h"
#include "tools/platen/words/words.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(FILE is a file, a folder (-r is taken for granted), @LIST or -. In folders
configurations are recognised by their content. Each that names printer OLD names NEW afterwards,
and so does each PMP; the old file stays beside it with ".bak" at the end of its name, and names in
folders that end so are passed over, as are symbolic links. Everything else in the files stays as it
was. What a move back (--map "NEW=OLD") would not bring back is listed as "lost", what only the old
driver understands as "at risk".

On Windows NEW is asked for its driver, and what it will not take of a configuration is a warning
(exit 3). Elsewhere, or with --names-only, the driver's name stays, too: when NEW has another one,
programs on Windows look for a printer of the old driver.

To another folder or machine: platen bundle and platen restore.

Examples:
  platen migrate plotters --map "Old plotter=New plotter" --dry-run
  platen migrate plotters --map "Old plotter=New plotter" --map Office=Office2
  platen migrate @changed.txt --map Office=Office2)";

struct MigrateOptions {
    files::Selection selection;
    printers::MoveOptions moves;
    bool dryRun = false;
};

constexpr std::wstring_view configurationExtension = L"pc3";

bool hasHeader(const std::string& beginning) { return beginning.starts_with("PIAFILEVERSION_"); }

/// Whether it is worth reading a file whose name says nothing.
bool mayBeContainer(const std::string& beginning) {
    const std::size_t first = beginning.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    return hasHeader(beginning) || (first != std::string::npos && beginning[first] == '{');
}

bool isFolder(const std::string& name) {
    return name != files::standardStream && ut::folderExists(ut::decodePath(name));
}

class Migration {
public:
    Migration(const MigrateOptions& options, const Console& console)
        : options_(options), console_(console) {}

    ExitCode run() {
        if (!moves_.read(options_.moves, console_)) {
            return ExitCode::Error;
        }
        files::Selected named;
        files::Selected found;
        select(named, found);
        const files::Batch batch{.doing = "moving", .jobs = options_.selection.jobs};
        ExitCode code = files::forEachFile(
            named, batch, console_,
            [&](const std::string& file, const Console& own) { return visitNamed(file, own); });
        code = worse(code, files::forEachFile(found, batch, console_,
                                              [&](const std::string& file, const Console& own) {
                                                  return visitFound(file, own);
                                              }));
        return worse(code, moves_.reportUnused(console_));
    }

private:
    /// Files that were named, and those that were found in folders.
    void select(files::Selected& named, files::Selected& found) const {
        files::Selection others = options_.selection;
        others.named.clear();
        for (const std::string& name : options_.selection.named) {
            if (!isFolder(name)) {
                others.named.push_back(name);
                continue;
            }
            files::FileWalk walk = files::walkFiles(name);
            for (const files::FileWalk::Fault& fault : walk.faults) {
                found.code = worse(found.code, fail(console_, fault.path, fault.reason));
            }
            std::move(walk.files.begin(), walk.files.end(), std::back_inserter(found.files));
        }
        found.isBatch = true;
        named = files::select(others, console_);
    }

    ExitCode visitFound(const std::string& file, const Console& console) {
        const bool namedConfiguration =
            ut::hasExtension(ut::decodePath(file), configurationExtension);
        constexpr std::size_t enoughToTell = 64;
        const std::string beginning = files::beginningOf(file, enoughToTell);
        if (file.ends_with(files::copySuffix) ||
            !(namedConfiguration || mayBeContainer(beginning))) {
            return ExitCode::Ok;
        }
        platen::SourceFile source;
        if (!source.read(ut::decodePath(file), platen::readingUpTo(files::usualMaxBody),
                         platen::SourceFile::Accept::OnlyFiles)) {
            if (namedConfiguration) {
                return fail(console, file, source.input().report());
            }
            return hasHeader(beginning) ? warn(console, file,
                                               "left alone: it cannot be read, so that it may or "
                                               "may not be a configuration; platen check says why")
                                        : ExitCode::Ok;
        }
        return move(file, source, namedConfiguration, console);
    }

    ExitCode visitNamed(const std::string& file, const Console& console) {
        platen::SourceFile source;
        if (!files::readSource(file, source, console, platen::readingUpTo(files::usualMaxBody))) {
            return ExitCode::Error;
        }
        return move(file, source, true, console);
    }

    /// `expected`: a configuration was, and it is worth a word that it is none.
    ExitCode move(const std::string& file, platen::SourceFile& source, bool expected,
                  const Console& console) {
        const platen::FileKind kind = platen::recognise(source.input()).kind;
        std::wstring printer;
        std::wstring driver;
        if (kind == platen::FileKind::Pc3) {
            bool printerChanged = false;
            const std::unique_ptr<CPlotCfg3> config =
                CPlotCfg3::fromInput(source.input(), printerChanged);
            if (!config) {
                return fail(console, file, source.input().report());
            }
            printer = config->meta.winDeviceName;
            driver = config->meta.winDriverName;
        } else if (kind != platen::FileKind::Pmp) {
            return expected ? warn(console, file,
                                   std::string("left alone: in spite of its name it holds a ") +
                                       platen::kindName(kind))
                            : ExitCode::Ok;
        }
        platen::MovedDocument moved;
        const platen::EditResult done = platen::moveDocument(
            source, {.printers = &moves_.map(), .asked = &moves_.asked()}, moved);
        if (kind == platen::FileKind::Pc3) {
            moves_.note(printer, moved.printer);
        }
        if (!done) {
            return fail(console, file, done->reason);
        }
        // Data alone goes to standard output.
        std::ostream& says = file == files::standardStream ? console.err : console.out;
        if (moved.printer == nullptr) {
            return tellThatItStays(file, source, kind, printer, moved, says, console);
        }
        ExitCode code = warn(console, file, source.input().report());
        std::string copy;
        if (!options_.dryRun) {
            code = worse(code, store(file, source, copy, console));
            if (code == ExitCode::Error) {
                return code;
            }
        }
        says << printable(file) << (options_.dryRun ? ": would move from " : ": moved from ")
             << words::quoted(printerOf(moved)) << " to " << words::quoted(moved.printer->to);
        if (!moves_.asked().contains(moved.printer->to) && !driver.empty()) {
            says << ", driver " << words::quoted(driver) << " kept";
        }
        says << (copy.empty() ? "" : ", copy in " + printable(copy)) << '\n';
        return worse(code, words::printLosses(moved, file, says, console));
    }

    static std::wstring printerOf(const platen::MovedDocument& moved) {
        return moved.changes.empty() ? moved.printer->from : moved.changes.front().before;
    }

    ExitCode tellThatItStays(const std::string& file, platen::SourceFile& source,
                             platen::FileKind kind, const std::wstring& printer,
                             const platen::MovedDocument& moved, std::ostream& says,
                             const Console& console) const {
        if (kind == platen::FileKind::Pc3) {
            says << printable(file) << ": "
                 << (printer.empty() ? "names no printer" : "stays with " + words::quoted(printer))
                 << '\n';
            words::printLosses(moved, file, says, console);
        }
        const bool isData = file == files::standardStream && !options_.dryRun;
        return isData ? files::writeSource(source, false, file, console) : ExitCode::Ok;
    }

    /// `copy` gets the name of the old file.
    static ExitCode store(const std::string& file, platen::SourceFile& source, std::string& copy,
                          const Console& console) {
        constexpr bool changed = true;
        if (file == files::standardStream) {
            return files::writeSource(source, changed, file, console);
        }
        copy = ut::encodePath(platen::copyNameFor(ut::decodePath(file)));
        return files::keepingCopy(
            file, {.backupSuffix = copy.substr(file.size())}, source.bytes(), console,
            [&] { return files::writeSource(source, changed, file, console); });
    }

    const MigrateOptions& options_;
    const Console& console_;
    printers::PrinterMoves moves_;
};

/// Moves configurations from printers to others.
ExitCode run(const MigrateOptions& options, const Console& console) {
    return Migration(options, console).run();
}

}  // namespace

CommandEntry addMigrate(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "migrate", "Move configurations to other printers", help);
    const auto options = std::make_shared<MigrateOptions>();
    files::addFiles(command, options->selection);
    printers::addMoves(command, options->moves)->required();
    command->add_flag("--dry-run", options->dryRun, "Say what would change");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

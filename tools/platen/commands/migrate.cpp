#include <CLI/CLI.hpp>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/source.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_map.h"
#include "tools/platen/printers/printer_names.h"
#include "tools/platen/words/words.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Configurations are recognised by their content. Each that names printer OLD names NEW
afterwards; the old file stays beside it with ".bak" at the end of its name, and names that end so
are passed over, as are symbolic links. Everything else in the files stays as it was.

On Windows NEW is asked for its driver, and what it will not take of a configuration is a warning
(exit 3). Elsewhere, or with --names-only, the driver's name stays, too: when NEW has another one,
programs on Windows look for a printer of the old driver.

Examples:
  platen migrate plotters --map "Old plotter=New plotter" --dry-run
  platen migrate plotters --map "Old plotter=New plotter" --map Office=Office2)";

struct MigrateOptions {
    std::string folder;
    /// "OLD=NEW"
    std::vector<std::string> maps;
    bool dryRun = false;
    /// Change names only, without asking printers.
    bool namesOnly = false;
};

constexpr std::wstring_view configurationExtension = L"pc3";
/// Ends the names of the copies, which are never changed themselves.
constexpr std::string_view copySuffix = ".bak";
constexpr PiaKey printerKey = L"win_device_name";
constexpr PiaKey friendlyKey = L"friendly_net_name";
constexpr PiaKey shortKey = L"short_net_name";
constexpr PiaKey driverKey = L"win_driver_name";

bool hasHeader(const std::string& beginning) { return beginning.starts_with("PIAFILEVERSION_"); }

/// Whether it is worth reading a file whose name says nothing.
bool mayBeContainer(const std::string& beginning) {
    const std::size_t first = beginning.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    return hasHeader(beginning) || (first != std::string::npos && beginning[first] == '{');
}

/// `file` and the suffix, with a number when that name is taken: copies are never overwritten.
std::string freeCopyName(const std::string& file) {
    std::string name = file + std::string(copySuffix);
    for (int number = 1;
         ut::fileExists(ut::decodePath(name)) || ut::folderExists(ut::decodePath(name)); ++number) {
        name = file + '.' + std::to_string(number) + std::string(copySuffix);
    }
    return name;
}

PiaStr* textItem(const PiaBlock& meta, PiaKey key) {
    return static_cast<PiaStr*>(meta.findItem(key.text(), PiaItemType::Str));
}

/// Names the new printer, and its driver unless that is not known. False when an item cannot be
/// added.
bool rename(PiaBlock& meta, const printers::PrinterMove& move, const std::wstring& driver) {
    for (const PiaKey key : {printerKey, friendlyKey, shortKey}) {
        PiaStr* item = textItem(meta, key);
        if (item != nullptr && ut::equalNoCase(item->value.str(), move.from)) {
            item->value = move.to;
        }
    }
    if (driver.empty()) {
        return true;
    }
    if (PiaStr* item = textItem(meta, driverKey); item != nullptr) {
        item->value = driver;
        return true;
    }
    return meta.addString(driverKey, driver);
}

class Migration {
public:
    Migration(const MigrateOptions& options, printers::PrinterMap map, const Console& console)
        : options_(options),
          map_(std::move(map)),
          console_(console),
          namesOnly_(options.namesOnly || !printers::printersFault().empty()) {}

    ExitCode run() {
        if (!namesOnly_ && !findNewPrinters()) {
            return ExitCode::Error;
        }
        const files::FileWalk walk = files::walkFiles(options_.folder);
        ExitCode worst = ExitCode::Ok;
        for (const files::FileWalk::Fault& fault : walk.faults) {
            worst = worse(worst, fail(console_, fault.path, fault.reason));
        }
        for (const std::string& file : walk.files) {
            worst = worse(worst, visit(file));
        }
        return worse(worst, reportUnused());
    }

private:
    /// Every printer is asked once, before the first file changes.
    bool findNewPrinters() {
        bool all = true;
        for (const printers::PrinterMove& move : map_.moves()) {
            std::optional<platen::InstalledPrinter> printer = printers::askPrinter(move.to);
            if (!printer) {
                fail(console_, "",
                     "there is no printer " + words::quoted(move.to) +
                         arguments::suggestion(move.to, printers::printerNames()) +
                         "; to rename without asking printers, add --names-only");
                all = false;
                continue;
            }
            printers_.insert_or_assign(move.to, std::move(*printer));
        }
        return all;
    }

    ExitCode visit(const std::string& file) {
        const bool namedConfiguration =
            ut::hasExtension(ut::decodePath(file), configurationExtension);
        constexpr std::size_t enoughToTell = 64;
        const std::string beginning = files::beginningOf(file, enoughToTell);
        if (file.ends_with(copySuffix) || !(namedConfiguration || mayBeContainer(beginning))) {
            return ExitCode::Ok;
        }
        platen::SourceFile source;
        if (!source.read(ut::decodePath(file), platen::readingUpTo(files::usualMaxBody),
                         platen::SourceFile::Accept::OnlyFiles)) {
            if (namedConfiguration) {
                return fail(console_, file, source.input().report());
            }
            return hasHeader(beginning) ? warn(console_, file,
                                               "left alone: it cannot be read, so that it may or "
                                               "may not be a configuration; platen check says why")
                                        : ExitCode::Ok;
        }
        const platen::FileKind kind = platen::recognise(source.input()).kind;
        if (kind == platen::FileKind::Pc3) {
            return visitConfiguration(file, source);
        }
        return namedConfiguration
                   ? warn(console_, file,
                          std::string("left alone: in spite of its name it holds a ") +
                              platen::kindName(kind))
                   : ExitCode::Ok;
    }

    ExitCode visitConfiguration(const std::string& file, platen::SourceFile& source) {
        bool printerChanged = false;
        const std::unique_ptr<CPlotCfg3> config =
            CPlotCfg3::fromInput(source.input(), printerChanged);
        if (!config) {
            return fail(console_, file, source.input().report());
        }
        const std::wstring& printer = config->meta.winDeviceName;
        printers::PrinterMove* move = map_.find(printer);
        if (move == nullptr) {
            console_.out << printable(file) << ": "
                         << (printer.empty() ? "names no printer"
                                             : "stays with " + words::quoted(printer))
                         << '\n';
            if (!printer.empty()) {
                seen_.insert(printer);
            }
            return ExitCode::Ok;
        }
        ++move->uses;
        std::string unused;
        if (source.form() == platen::FileForm::Compressed &&
            ut::convertToAnsi(move->to, unused) != 0) {
            return fail(
                console_, file,
                "nothing was written: the code page of the file has no such characters as " +
                    words::quoted(move->to));
        }
        return moveTo(file, source, *config, *move);
    }

    ExitCode moveTo(const std::string& file, platen::SourceFile& source, const CPlotCfg3& config,
                    const printers::PrinterMove& move) {
        ExitCode code = warn(console_, file, source.input().report());
        std::wstring driver;
        if (const auto printer = printers_.find(move.to); printer != printers_.end()) {
            driver = printer->second.driver;
            for (const std::string& reason : platen::misfits(config, printer->second)) {
                code = worse(code, warn(console_, file, reason));
            }
        }
        std::string copy;
        if (!options_.dryRun) {
            copy = freeCopyName(file);
            code = worse(code, store(file, source, move, driver, copy));
            if (code == ExitCode::Error) {
                return code;
            }
        }
        console_.out << printable(file) << (copy.empty() ? ": would move from " : ": moved from ")
                     << words::quoted(config.meta.winDeviceName) << " to "
                     << words::quoted(move.to);
        if (driver.empty() && !config.meta.winDriverName.empty()) {
            console_.out << ", driver " << words::quoted(config.meta.winDriverName) << " kept";
        }
        console_.out << (copy.empty() ? "" : ", copy in " + printable(copy)) << '\n';
        return code;
    }

    ExitCode store(const std::string& file, platen::SourceFile& source,
                   const printers::PrinterMove& move, const std::wstring& driver,
                   const std::string& copy) const {
        PiaBlock& meta =
            *static_cast<PiaBlock*>(source.input().root()->findItem(L"meta", PiaItemType::Block));
        if (!rename(meta, move, driver)) {
            return fail(console_, file, "nothing was written: the driver cannot be named");
        }
        constexpr bool changed = true;
        if (files::writeSource(source, !changed, copy, console_) == ExitCode::Error) {
            return fail(console_, file, "not changed, since no copy could be kept");
        }
        return files::writeSource(source, changed, file, console_);
    }

    ExitCode reportUnused() const {
        ExitCode code = ExitCode::Ok;
        const std::vector<std::wstring> names(seen_.begin(), seen_.end());
        for (const printers::PrinterMove& move : map_.moves()) {
            if (move.uses == 0) {
                fail(console_, "",
                     "no configuration names the printer " + words::quoted(move.from) +
                         arguments::suggestion(move.from, names));
                code = ExitCode::Difference;
            }
        }
        return code;
    }

    const MigrateOptions& options_;
    printers::PrinterMap map_;
    const Console& console_;
    bool namesOnly_;
    std::map<std::wstring, platen::InstalledPrinter> printers_;
    /// Printers that stay.
    std::set<std::wstring> seen_;
};

/// Moves the configurations of a folder from printers to others.
ExitCode run(const MigrateOptions& options, const Console& console) {
    printers::PrinterMap map;
    bool sound = true;
    for (const std::string& argument : options.maps) {
        if (const std::string fault = map.add(argument); !fault.empty()) {
            fail(console, "--map " + argument, fault);
            sound = false;
        }
    }
    if (!sound) {
        return ExitCode::Error;
    }
    if (!ut::folderExists(ut::decodePath(options.folder))) {
        return fail(console, options.folder, "there is no such folder");
    }
    return Migration(options, std::move(map), console).run();
}

}  // namespace

CommandEntry addMigrate(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "migrate", "Move configurations to other printers", help);
    const auto options = std::make_shared<MigrateOptions>();
    arguments::takeText(
        command->add_option("DIR", options->folder, "Folder; the folders in it are searched, too"))
        ->required();
    arguments::takeText(
        command->add_option("--map", options->maps, "Old and new printer; may be repeated"))
        ->type_name("OLD=NEW")
        ->required();
    command->add_flag("--dry-run", options->dryRun, "Say what would change");
    command->add_flag("--names-only", options->namesOnly,
                      "Do not ask printers; their drivers stay as they are (always so where "
                      "printers cannot be asked)");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

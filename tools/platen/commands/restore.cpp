#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <platen/house.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/source.h"
#include "tools/platen/printers/printer_moves.h"
#include "tools/platen/words/columns.h"
#include "tools/platen/words/losses_text.h"
#include "tools/platen/words/words.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(BUNDLE is what platen bundle made. Its files come to DIR, which is made if it is
missing. Each configuration names its PMP where that lands (a name without a folder stays where it
leads there), and with --map the new printer in place of the old one. Every file is compared with its
digest first, written whole or not at all, and read back, and the PMP of each configuration has to be
found.

A file that is there and equal stays; one that differs is refused (exit 1), unless --replace is given:
then the old one is kept beside it with ".bak" at the end of its name. What a move back would not
bring back is listed as "lost", what only the old driver understands as "at risk". Where printers
can be asked, what the new one will not take is a warning (exit 3).

An archive that was tampered with (paths out of DIR, links, encrypted or overlapping entries, sizes
that lie) is refused whole. No link in DIR is followed. Entries that the manifest does not name stay
in the archive. A zip archive without a manifest is no bundle: unpack it, then use platen migrate.

Examples:
  platen restore office.zip --list
  platen restore office.zip plotters --dry-run
  platen restore office.zip plotters --map "Old plotter=New plotter" --map Office=Office2
  platen restore office.zip plotters --json         one JSON object a line, schema platen.restore/1)";

struct RestoreOptions {
    std::string bundle;
    std::string folder;
    printers::MoveOptions moves;
    bool list = false;
    bool dryRun = false;
    bool replace = false;
    bool json = false;
    unsigned jobs = 0;
    std::uint64_t maxBody = files::usualMaxBody;
};

class Restoring {
public:
    Restoring(const RestoreOptions& options, const Console& console)
        : options_(options), console_(console) {}

    ExitCode run() {
        if (options_.folder.empty() != options_.list) {
            return fail(console_, "",
                        options_.list ? "--list needs no DIR: nothing is written"
                                      : "DIR is missing: where the files go (--list shows them)");
        }
        if (!moves_.read(options_.moves, console_)) {
            return ExitCode::Error;
        }
        platen::BundleLimits limits;
        limits.fileBytes = options_.maxBody;
        if (const platen::EditResult done = bundle_.open(ut::decodePath(options_.bundle), limits);
            !done) {
            return fail(console_, options_.bundle, done->reason + "; nothing was written");
        }
        const ExitCode code = warnOfStrangers();
        return worse(code, options_.list ? list() : restore());
    }

private:
    ExitCode warnOfStrangers() const {
        const std::vector<std::string>& names = bundle_.strangers();
        if (names.empty()) {
            return ExitCode::Ok;
        }
        constexpr std::size_t mostNamed = 5;
        std::string text;
        for (std::size_t index = 0; index < std::min(names.size(), mostNamed); ++index) {
            text += (index == 0 ? "\"" : ", \"") + printable(names[index]) + '"';
        }
        return warn(console_, options_.bundle,
                    std::to_string(names.size()) +
                        " entries are not in the manifest, and stay in the archive: " + text +
                        (names.size() > mostNamed ? " ..." : ""));
    }

    ExitCode list() const {
        const platen::BundleManifest& manifest = bundle_.manifest();
        if (options_.json) {
            console_.out << platen::manifestJson(manifest) << '\n';
            return ExitCode::Ok;
        }
        console_.out << "snapshot of " << words::text(manifest.date) << ", "
                     << manifest.files.size() << " files, made by " << words::text(manifest.madeBy)
                     << " of";
        for (const std::wstring& folder : manifest.folders) {
            console_.out << ' ' << words::quoted(folder);
        }
        console_.out << '\n';
        std::vector<std::vector<std::string>> rows{{"file", "kind", "bytes", "printer", "PMP"}};
        for (const platen::BundledFile& file : manifest.files) {
            const std::wstring& parameters =
                file.parametersPath.empty() ? file.parameters : file.parametersPath;
            rows.push_back({words::text(file.path),
                            file.kind ? platen::kindWord(*file.kind) : "damaged",
                            std::to_string(file.bytes), words::text(file.printer),
                            words::text(parameters) + (file.parametersPath.empty() &&
                                                               file.kind == platen::FileKind::Pc3 &&
                                                               !parameters.empty()
                                                           ? " (not found)"
                                                           : "")});
        }
        words::printColumns(rows, console_);
        for (const platen::LeftOutFile& file : manifest.leftOut) {
            console_.out << "left out: " << words::text(file.place) << ": " << file.reason << '\n';
        }
        return ExitCode::Ok;
    }

    ExitCode restore() {
        settings_ = {.folder = ut::decodePath(options_.folder),
                     .printers = &moves_.map(),
                     .asked = &moves_.asked(),
                     .replace = options_.replace,
                     .dryRun = options_.dryRun,
                     .reading = platen::readingUpTo(options_.maxBody)};
        files::Selected others;
        files::Selected configurations;
        others.isBatch = configurations.isBatch = true;
        for (const platen::BundledFile& file : bundle_.manifest().files) {
            std::string name = ut::encodeUtf8(file.path);
            (file.kind == platen::FileKind::Pc3 ? configurations : others).files.push_back(name);
            files_.emplace(std::move(name), &file);
        }
        ExitCode code = ExitCode::Ok;
        for (const files::Selected* selected : {&others, &configurations}) {
            code = worse(code, files::forEachFile(
                                   *selected, {.doing = "restoring", .jobs = options_.jobs},
                                   console_, [&](const std::string& name, const Console& own) {
                                       return restoreOne(*files_.at(name), own);
                                   }));
        }
        if (!options_.json) {
            tellSum();
        }
        return worse(code, moves_.reportUnused(console_));
    }

    ExitCode restoreOne(const platen::BundledFile& file, const Console& console) {
        using State = platen::RestoredFile::State;
        const platen::RestoredFile restored = platen::restoreFile(bundle_, file, settings_);
        ++counts_[static_cast<std::size_t>(restored.state)];
        if (file.kind == platen::FileKind::Pc3) {
            moves_.note(file.printer, restored.moved.printer);
        }
        losses_ += restored.moved.losses.size();
        const std::string place =
            ut::encodePath(ut::joinPath(settings_.folder, ut::correctSlashes(file.path)));
        if (options_.json) {
            console.out << platen::restoreJson(file, restored, options_.dryRun) << '\n';
        }
        if (restored.state == State::Failed) {
            return fail(console, place, restored.fault);
        }
        if (restored.state == State::Different) {
            fail(console, place, restored.fault + "; --replace takes the one of the bundle");
            return ExitCode::Difference;
        }
        std::ostringstream nowhere;
        std::ostream& says = options_.json ? nowhere : console.out;
        says << printable(place) << ": " << words::restoredInWords(restored, options_.dryRun);
        for (const platen::MovedDocument::Change& change : restored.moved.changes) {
            says << ", " << words::changeInWords(change);
        }
        says << '\n';
        return words::printLosses(restored.moved, place, says, console);
    }

    std::size_t count(platen::RestoredFile::State state) const {
        return counts_[static_cast<std::size_t>(state)];
    }

    void tellSum() const {
        using State = platen::RestoredFile::State;
        const std::size_t written = count(State::Written) + count(State::Replaced);
        console_.out << written << " of " << files_.size() << " files "
                     << (options_.dryRun ? "would be written" : "written and read back");
        if (const std::size_t there = count(State::AlreadyThere); there != 0) {
            console_.out << ", " << there << " there already";
        }
        if (const std::size_t different = count(State::Different); different != 0) {
            console_.out << ", " << different << " different there";
        }
        if (const std::size_t failed = count(State::Failed); failed != 0) {
            console_.out << ", " << failed << " failed";
        }
        if (losses_ != 0) {
            console_.out << "; " << losses_ << " losses, named above";
        }
        console_.out << '\n';
    }

    const RestoreOptions& options_;
    const Console& console_;
    printers::PrinterMoves moves_;
    platen::Bundle bundle_;
    platen::RestoreSettings settings_;
    std::map<std::string, const platen::BundledFile*> files_;
    std::array<std::atomic<std::size_t>, 5> counts_{};
    std::atomic<std::size_t> losses_ = 0;
};

/// Restores a bundle, or shows what is in it.
ExitCode run(const RestoreOptions& options, const Console& console) {
    return Restoring(options, console).run();
}

}  // namespace

CommandEntry addRestore(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "restore", "Bring the files of a bundle to a folder, and to its printers", help);
    const auto options = std::make_shared<RestoreOptions>();
    arguments::takeText(command->add_option("BUNDLE", options->bundle, "What platen bundle made"))
        ->required();
    arguments::takeText(command->add_option("DIR", options->folder, "Where the files go"));
    printers::addMoves(command, options->moves);
    command->add_flag("--list", options->list, "Show what is in it");
    command->add_flag("--dry-run", options->dryRun, "Say what would be written");
    command->add_flag("--replace", options->replace,
                      "Replace files that differ, and keep them under names that end in .bak");
    command->add_flag("--json", options->json, "One JSON object a line");
    command
        ->add_option("-j,--jobs", options->jobs,
                     "Files worked on at once (as many as there are processors)")
        ->type_name("N")
        ->check(CLI::Range(1U, 1024U));
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

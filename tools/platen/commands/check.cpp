#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/console/remedies.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/destination.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"
#include "tools/platen/printers/installed_printers.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Each finding is a line with a code that stays the same from release to release,
the place and a remedy. Errors keep the file from being used (exit 2), warnings do not (exit 3).
--fix mends what nothing is lost or guessed by: a header, checksums and lengths, one wrong byte that
the checksum tells, equal duplicates, closing braces at the end. What else was found is left and
named; platen repair goes further.

Examples:
  platen check pens.ctb                 "pens.ctb: ok, ..." or the findings
  platen check plotter.pc3              the PMP that it names is looked for, too
  platen check --printers plotter.pc3   Windows: is the printer there, and does it take all this?
  platen check --fix pens.ctb           what would be mended; -o OUT or --in-place=.bak does it
  platen check --fix -r plotters --in-place=.bak
  platen check -r plotters              every plotter file in a folder, on all processors
  platen check --json *.ctb             one JSON object a line, schema platen.check/1)";

struct CheckOptions {
    files::Selection selection;
    bool json = false;
    /// Ask the printers that configurations name, too.
    bool printers = false;
    /// Mend what is safe to mend.
    bool fix = false;
    files::Destination destination;
    std::uint64_t maxBody = files::usualMaxBody;
};

void printFindings(const std::string& file, const platen::CheckResult& result,
                   const Console& console) {
    const std::string shown = printable(file);
    if (result.verdict == platen::Verdict::Sound) {
        console.out << shown << ": ok, " << platen::kindName(*result.kind) << '\n';
    }
    for (const platen::Finding& finding : result.findings) {
        console.out << shown << ": " << platen::describe(finding) << '\n';
    }
    if (result.omitted != 0) {
        console.out << shown << ": " << result.omitted << " more findings\n";
    }
}

ExitCode codeOf(platen::Verdict verdict) {
    switch (verdict) {
        case platen::Verdict::Sound:
            return ExitCode::Ok;
        case platen::Verdict::Warnings:
            return ExitCode::Warnings;
        case platen::Verdict::Errors:
            break;
    }
    return ExitCode::Error;
}

/// The findings of a file, with what this command knows to do about them.
ExitCode tell(const std::string& file, platen::CheckResult result, const CheckOptions& options,
              const Console& console) {
    for (platen::Finding& finding : result.findings) {
        finding.remedy = console::remedyOf(finding.code);
    }
    if (options.json && !options.fix) {
        console.out << platen::checkJson(file, result) << '\n';
    }
    if (!result.findings.empty() && result.findings[0].code == PiaCode::FileUnreadable) {
        return fail(console, file,
                    result.findings[0].describe() + "; " + result.findings[0].remedy);
    }
    if (!options.json) {
        printFindings(file, result, console);
    }
    return codeOf(result.verdict);
}

ExitCode checkFile(const std::string& file, const CheckOptions& options, const Console& console) {
    const platen::CheckSettings settings{
        .reading = platen::readingUpTo(options.maxBody),
        .printers = options.printers ? printers::installedPrinters() : nullptr};
    if (file != files::standardStream) {
        return tell(file, platen::check(ut::decodePath(file), settings), options, console);
    }
    std::string bytes;
    if (!files::readStandardInput(bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    return tell(file, platen::checkBytes(bytes, {}, settings), options, console);
}

/// Puts the mended file where it belongs.
ExitCode storeFixed(const std::string& file, const std::string& before, const std::string& after,
                    const files::Destination& destination, const Console& console) {
    if (destination.dryRun) {
        return ExitCode::Ok;
    }
    if (!destination.out.empty()) {
        return files::writeBytes(after, destination.out, console);
    }
    if (!destination.inPlace || before == after) {
        return ExitCode::Ok;
    }
    return files::keepingCopy(file, destination, before, console, [&] {
        const std::wstring path = ut::decodePath(file);
        if (!platen::FileMark(path, before).differsNow(path)) {
            return files::writeBytes(after, file, console);
        }
        PiaReport report;
        report.fail({.code = PiaCode::FileChanged});
        return fail(console, file, report);
    });
}

ExitCode fixFile(const std::string& file, const CheckOptions& options, const Console& console) {
    const files::Destination& destination = options.destination;
    std::string bytes;
    if (!files::readBytes(file, bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    const bool isStream = file == files::standardStream;
    const platen::RepairResult result =
        platen::repair(bytes, {.limits = platen::readingUpTo(options.maxBody).limits,
                               .file = isStream ? std::wstring() : ut::decodePath(file),
                               .safeOnly = true});
    if (!result) {
        return fail(console, file, result.reason);
    }
    const Console said = files::besideData(destination.out, console);
    const bool isWritten = !destination.dryRun && (destination.inPlace || !destination.out.empty());
    if (options.json) {
        said.out << platen::repairJson(file, result) << '\n';
    } else {
        for (const platen::Assumption& assumption : result.assumptions) {
            said.out << printable(file) << ": " << (isWritten ? "fixed " : "would fix ")
                     << platen::describe(assumption) << '\n';
        }
    }
    const ExitCode found = tell(file, result.check, options, said);
    if (found == ExitCode::Error) {
        return found;
    }
    const bool isLeft = !isWritten && !result.assumptions.empty();
    return worse(isLeft ? ExitCode::Warnings : found,
                 storeFixed(file, bytes, result.bytes, destination, console));
}

/// What is wrong with the options taken together, now that the files are known; empty when nothing
/// is.
std::string usageFault(const CheckOptions& options, const files::Selected& selected) {
    const auto& [out, inPlace, dryRun, backupSuffix] = options.destination;
    if (!options.fix) {
        return inPlace || dryRun || !out.empty() ? "-o, --in-place and --dry-run go with --fix"
                                                 : "";
    }
    if (inPlace && !out.empty()) {
        return "say where the result goes: either -o OUT or --in-place";
    }
    if (backupSuffix.find_first_of("/\\") != std::string::npos) {
        return "the suffix of --in-place only ends a name; leave slashes out";
    }
    if (!out.empty() && (selected.isBatch || selected.files.size() != 1)) {
        return "many files have no room in one OUT; use --in-place";
    }
    for (const std::string& file : selected.files) {
        if (!out.empty() && files::isSameFile(file, out)) {
            return "OUT is the file itself; use --in-place for that";
        }
        if (inPlace && file == files::standardStream) {
            return "standard input cannot be changed in place; write the result with -o OUT";
        }
    }
    return {};
}

/// Verifies files and lists every finding.
ExitCode run(const CheckOptions& options, const Console& console) {
    if (const std::string fault = printers::printersFault(); options.printers && !fault.empty()) {
        return fail(console, "", "--printers cannot be used: " + fault);
    }
    const files::Selected selected = files::select(options.selection, console);
    if (const std::string fault = usageFault(options, selected); !fault.empty()) {
        return fail(console, "", fault);
    }
    return files::forEachFile(
        selected,
        {.doing = "checking", .jobs = options.selection.jobs, .oneThread = options.printers},
        console, [&](const std::string& file, const Console& own) {
            return options.fix ? fixFile(file, options, own) : checkFile(file, options, own);
        });
}

}  // namespace

CommandEntry addCheck(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "check", "Verify files and list every finding", help);
    const auto options = std::make_shared<CheckOptions>();
    files::addFiles(command, options->selection);
    command->add_flag("--json", options->json, "One JSON object a line");
    command->add_flag("--printers", options->printers,
                      "Ask the printers of configurations, too (Windows)");
    command->add_flag("--fix", options->fix, "Mend what is safe to mend");
    files::addDestination(command, options->destination);
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/console/remedies.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/source.h"
#include "tools/platen/printers/installed_printers.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Each finding is a line with a code that stays the same from release to release,
the place and a remedy. Errors keep the file from being used (exit 2), warnings do not (exit 3).

Examples:
  platen check pens.ctb                 "pens.ctb: ok, ..." or the findings
  platen check plotter.pc3              the PMP that it names is looked for, too
  platen check --printers plotter.pc3   Windows: is the printer there, and does it take all this?
  platen check -r plotters              every plotter file in a folder, on all processors
  platen check --json *.ctb             one JSON object a line, schema platen.check/1)";

struct CheckOptions {
    files::Selection selection;
    bool json = false;
    /// Ask the printers that configurations name, too.
    bool printers = false;
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

ExitCode checkFile(const std::string& file, const CheckOptions& options, const Console& console) {
    const platen::CheckSettings settings{
        .reading = platen::readingUpTo(options.maxBody),
        .printers = options.printers ? printers::installedPrinters() : nullptr};
    platen::CheckResult result;
    if (file == files::standardStream) {
        std::string bytes;
        if (!files::readStandardInput(bytes, options.maxBody, console)) {
            return ExitCode::Error;
        }
        result = platen::checkBytes(bytes, {}, settings);
    } else {
        result = platen::check(ut::decodePath(file), settings);
    }
    for (platen::Finding& finding : result.findings) {
        finding.remedy = console::remedyOf(finding.code);
    }
    if (options.json) {
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

/// Verifies files and lists every finding.
ExitCode run(const CheckOptions& options, const Console& console) {
    if (const std::string fault = printers::printersFault(); options.printers && !fault.empty()) {
        return fail(console, "", "--printers cannot be used: " + fault);
    }
    return files::forEachSelected(
        options.selection, {.doing = "checking", .oneThread = options.printers}, console,
        [&](const std::string& file, const Console& own) { return checkFile(file, options, own); });
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
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

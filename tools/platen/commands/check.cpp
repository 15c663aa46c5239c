#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/config_rules.h"
#include "tools/platen/files/source.h"
#include "tools/platen/findings.h"
#include "tools/platen/json_lines.h"
#include "tools/platen/parameters_rules.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_rules.h"
#include "tools/platen/recognise.h"
#include "tools/platen/table_rules.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Each finding is a line with a code that stays the same from release to release,
the place and a remedy. Errors keep the file from being used (exit 2), warnings do not (exit 3).

Examples:
  platen check pens.ctb                 "pens.ctb: ok, ..." or the findings
  platen check plotter.pc3              the PMP that it names is looked for, too
  platen check --printers plotter.pc3   Windows: is the printer there, and does it take all this?
  platen check --json *.ctb             one JSON object a line, schema platen.check/1)";

struct CheckOptions {
    std::vector<std::string> files;
    bool json = false;
    /// Ask the printers that configurations name, too.
    bool printers = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

/// What would not survive if the file were written again. The file itself is not at fault, so
/// that even a refusal is a warning.
void checkRewriting(const PiaBlock& root, platen::FindingList& findings) {
    PiaFileOut writer;
    ut::ByteBuffer bytes;
    const bool encoded = writer.encode(root, bytes);
    findings.addWarnings(writer.report());
    if (!encoded && writer.report().failure()) {
        findings.add(*writer.report().failure(), platen::Severity::Warning);
    }
}

std::optional<platen::FileKind> examine(PiaInput& input, const std::wstring& path,
                                        const PiaReadOptions& reading, bool askPrinters,
                                        platen::FindingList& findings) {
    std::optional<platen::FileKind> kind;
    platen::Content content;
    const bool opened = input.root() != nullptr;
    if (opened) {
        content = platen::readContent(input, path, reading);
        kind = content.kind;
    }
    findings.addWarnings(input.report());
    if (input.report().failure()) {
        findings.add(*input.report().failure(), platen::Severity::Error);
    }
    if (content.table) {
        platen::checkTable(*content.table, input.container().kind, findings);
    }
    if (content.config) {
        platen::checkConfig(input, content, findings);
        if (askPrinters) {
            printers::checkPrinter(*content.config, findings);
        }
    }
    if (content.parameters) {
        platen::checkParameters(input, *content.parameters, findings);
    }
    if (opened) {
        findings.locate(input);
        checkRewriting(*input.root(), findings);
    }
    return kind;
}

void printFindings(const std::string& file, std::optional<platen::FileKind> kind,
                   const platen::FindingList& findings, const Console& console) {
    const std::string shown = printable(file);
    if (findings.verdict() == ExitCode::Ok) {
        console.out << shown << ": ok, " << platen::kindName(*kind) << '\n';
    }
    for (const platen::Finding& finding : findings.list()) {
        console.out << shown << ": " << describe(finding) << '\n';
    }
    if (findings.omitted() != 0) {
        console.out << shown << ": " << findings.omitted() << " more findings\n";
    }
}

bool cannotBeRead(const PiaReport& report) {
    return report.failure() && report.failure()->code == PiaCode::FileUnreadable;
}

ExitCode checkFile(const std::string& file, const CheckOptions& options, const Console& console) {
    const std::wstring path = ut::decodePath(file);
    const PiaReadOptions reading = files::readingUpTo(options.maxBody);
    PiaInput input;
    static_cast<void>(input.open(path.c_str(), reading));
    platen::FindingList findings;
    const std::optional<platen::FileKind> kind =
        examine(input, path, reading, options.printers, findings);
    if (options.json) {
        console.out << platen::checkLine(file, kind, findings) << '\n';
    }
    if (cannotBeRead(input.report())) {
        return fail(console, file, input.report());
    }
    if (!options.json) {
        printFindings(file, kind, findings, console);
    }
    return findings.verdict();
}

/// Verifies files and lists every finding.
ExitCode run(const CheckOptions& options, const Console& console) {
    if (const std::string fault = printers::printersFault(); options.printers && !fault.empty()) {
        return fail(console, "", "--printers cannot be used: " + fault);
    }
    ExitCode worst = ExitCode::Ok;
    for (const std::string& file : options.files) {
        worst = worse(worst, checkFile(file, options, console));
    }
    return worst;
}

}  // namespace

CommandEntry addCheck(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "check", "Verify files and list every finding", help);
    const auto options = std::make_shared<CheckOptions>();
    arguments::takeText(command->add_option("FILE", options->files, "Files"))->required();
    command->add_flag("--json", options->json, "One JSON object a line");
    command->add_flag("--printers", options->printers,
                      "Ask the printers of configurations, too (Windows)");
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

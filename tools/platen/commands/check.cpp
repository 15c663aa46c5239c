#include <optional>
#include <string>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/commands.h"
#include "tools/platen/config_rules.h"
#include "tools/platen/files/source.h"
#include "tools/platen/findings.h"
#include "tools/platen/json_lines.h"
#include "tools/platen/parameters_rules.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_rules.h"
#include "tools/platen/recognise.h"
#include "tools/platen/table_rules.h"

namespace platen {
namespace {

/// What would not survive if the file were written again. The file itself is not at fault, so
/// that even a refusal is a warning.
void checkRewriting(const PiaBlock& root, FindingList& findings) {
    PiaFileOut writer;
    ut::ByteBuffer bytes;
    const bool encoded = writer.encode(root, bytes);
    findings.addWarnings(writer.report());
    if (!encoded && writer.report().failure()) {
        findings.add(*writer.report().failure(), Severity::Warning);
    }
}

std::optional<FileKind> examine(PiaInput& input, const std::wstring& path,
                                const PiaReadOptions& reading, bool askPrinters,
                                FindingList& findings) {
    std::optional<FileKind> kind;
    Content content;
    const bool opened = input.root() != nullptr;
    if (opened) {
        content = readContent(input, path, reading);
        kind = content.kind;
    }
    findings.addWarnings(input.report());
    if (input.report().failure()) {
        findings.add(*input.report().failure(), Severity::Error);
    }
    if (content.table) {
        checkTable(*content.table, input.container().kind, findings);
    }
    if (content.config) {
        checkConfig(input, content, findings);
        if (askPrinters) {
            checkPrinter(*content.config, findings);
        }
    }
    if (content.parameters) {
        checkParameters(input, *content.parameters, findings);
    }
    if (opened) {
        findings.locate(input);
        checkRewriting(*input.root(), findings);
    }
    return kind;
}

void printFindings(const std::string& file, std::optional<FileKind> kind,
                   const FindingList& findings, const Console& console) {
    const std::string shown = printable(file);
    if (findings.verdict() == ExitCode::Ok) {
        console.out << shown << ": ok, " << kindName(*kind) << '\n';
    }
    for (const Finding& finding : findings.list()) {
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
    const PiaReadOptions reading = readingUpTo(options.maxBody);
    PiaInput input;
    static_cast<void>(input.open(path.c_str(), reading));
    FindingList findings;
    const std::optional<FileKind> kind = examine(input, path, reading, options.printers, findings);
    if (options.json) {
        console.out << checkLine(file, kind, findings) << '\n';
    }
    if (cannotBeRead(input.report())) {
        return fail(console, file, input.report());
    }
    if (!options.json) {
        printFindings(file, kind, findings, console);
    }
    return findings.verdict();
}

}  // namespace

ExitCode check(const CheckOptions& options, const Console& console) {
    if (const std::string fault = printersFault(); options.printers && !fault.empty()) {
        return fail(console, "", "--printers cannot be used: " + fault);
    }
    ExitCode worst = ExitCode::Ok;
    for (const std::string& file : options.files) {
        worst = worse(worst, checkFile(file, options, console));
    }
    return worst;
}

}  // namespace platen

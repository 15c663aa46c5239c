#include "tools/platen/words/audit_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <ostream>

#include <platen/utcore.h>
#include "tools/platen/words/words.h"

namespace cli::words {
namespace {

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void printHeading(const platen::AuditFinding& first, std::ostream& out) {
    out << (first.severity == platen::Severity::Error ? "error" : "warning") << " ["
        << platen::auditCodeWord(first.code) << "] " << platen::auditCodeTitle(first.code) << "\n  "
        << platen::auditCodeRemedy(first.code) << '\n';
}

void printFinding(const platen::AuditFinding& finding, std::ostream& out) {
    out << "  - " << (finding.files.empty() ? "" : text(finding.files.front()) + ": ")
        << finding.message << '\n';
    constexpr std::size_t othersShown = 5;
    if (finding.details.empty() && finding.files.size() > 1) {
        out << "      with ";
        for (std::size_t place = 1; place < std::min(finding.files.size(), othersShown + 1);
             ++place) {
            out << (place == 1 ? "" : ", ") << text(finding.files[place]);
        }
        if (finding.files.size() > othersShown + 1) {
            out << " and " << finding.files.size() - othersShown - 1 << " more";
        }
        out << '\n';
    }
    for (const platen::AuditDetail& detail : finding.details) {
        out << "      " << detail.text << '\n';
    }
    if (finding.omitted != 0) {
        out << "      and " << finding.omitted << " more\n";
    }
    const std::string command = platen::commandLine(finding.command, shellOfThisSystem());
    if (!command.empty()) {
        out << "      mend: " << command << '\n';
    }
}

}  // namespace

platen::Shell shellOfThisSystem() {
    constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';
    return isWindows ? platen::Shell::Windows : platen::Shell::Posix;
}

void printFindings(const platen::AuditResult& result, const Console& console) {
    const platen::AuditFinding* previous = nullptr;
    for (const platen::AuditFinding& finding : result.findings) {
        const bool isOtherFolder = previous == nullptr || previous->folder != finding.folder;
        const bool isOtherKind = isOtherFolder || previous->code != finding.code ||
                                 previous->severity != finding.severity;
        console.out << (previous != nullptr && isOtherKind ? "\n" : "");
        if (isOtherFolder && result.folders.size() > 1) {
            console.out << "In " << text(result.folders[finding.folder]) << ":\n";
        }
        if (isOtherKind) {
            printHeading(finding, console.out);
        }
        printFinding(finding, console.out);
        previous = &finding;
    }
    console.out << (previous == nullptr ? "" : "\n");
}

void printSummary(const platen::AuditResult& result, const Console& console) {
    struct Words {
        const char* one;
        const char* many;
    };
    constexpr std::array<Words, 5> kinds{{{"CTB table", "CTB tables"},
                                          {"STB table", "STB tables"},
                                          {"plot configuration", "plot configurations"},
                                          {"PMP", "PMPs"},
                                          {"other container", "other containers"}}};
    std::string parts;
    const auto add = [&](std::size_t count, const char* one, const char* many) {
        if (count != 0) {
            parts += (parts.empty() ? " (" : ", ") + counted(count, one, many);
        }
    };
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        add(result.kinds[kind], kinds[kind].one, kinds[kind].many);
    }
    add(result.unreadable, "that cannot be read", "that cannot be read");
    for (const platen::AuditNote& note : result.notes) {
        console.out << note.text
                    << (note.about == platen::AuditNote::About::Printers
                            ? "; --printers FILE gives their names\n"
                            : "; --used FILE gives their names\n");
    }
    console.out << (result.findings.empty()
                        ? "nothing found"
                        : counted(result.findings.size(), "finding", "findings"))
                << " in " << counted(result.fileCount(), "file", "files") << parts
                << (parts.empty() ? "\n" : ")\n");
}

}  // namespace cli::words

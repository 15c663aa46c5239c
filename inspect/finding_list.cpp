#include "inspect/finding_list.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <platen/utcore.h>

namespace platen {
namespace {

bool hasOnlyPath(const PiaFinding& finding) {
    return !finding.line && !finding.offset && !finding.path.empty();
}

}  // namespace

std::string describe(const Finding& finding) {
    return std::string(finding.severity == Severity::Error ? "error" : "warning") + " [" +
           piaCodeWord(finding.code) + "] " + finding.describe() + "; " +
           ut::printable(finding.remedy);
}

void FindingList::add(PiaFinding finding, Severity severity) {
    const bool isError = severity == Severity::Error;
    result_.verdict = std::max(result_.verdict, isError ? Verdict::Errors : Verdict::Warnings);
    if (result_.findings.size() < most_) {
        const char* remedy = piaCodeRemedy(finding.code);
        result_.findings.push_back({std::move(finding), severity, remedy});
    } else {
        ++result_.omitted;
    }
}

void FindingList::addWarnings(const PiaReport& report) {
    for (const PiaFinding& finding : report.warnings()) {
        warn(finding);
    }
    result_.omitted += report.warningCount() - report.warnings().size();
}

void FindingList::locate(const PiaInput& input) {
    for (Finding& finding : result_.findings) {
        if (hasOnlyPath(finding)) {
            if (const std::uint32_t line = piaLineOf(*input.root(), finding.path)) {
                finding.line = line;
            }
        }
    }
}

CheckResult FindingList::take(std::optional<FileKind> kind) {
    result_.kind = kind;
    return std::move(result_);
}

}  // namespace platen

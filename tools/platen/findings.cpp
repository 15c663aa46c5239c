#include "tools/platen/findings.h"

#include <string_view>
#include <utility>

#include <platen/utcore.h>
#include "tools/platen/console/console.h"
#include "tools/platen/remedies.h"

namespace platen {
namespace {

/// `text` for a line among others; the whole of it is in the JSON form.
std::string excerpt(std::wstring_view text) {
    constexpr std::size_t longest = 60;
    const std::wstring_view shown = ut::utf16Prefix(text, longest);
    return ut::encodeUtf8(shown) + (shown.size() < text.size() ? "..." : "");
}

}  // namespace

std::string describe(const Finding& finding) {
    std::string text = finding.severity == Severity::Error ? "error" : "warning";
    text += std::string(" [") + finding.rule.word + "] " + finding.rule.message;
    if (finding.line) {
        text += ", line " + std::to_string(*finding.line);
    }
    if (finding.offset) {
        text += ", byte " + std::to_string(*finding.offset);
    }
    if (!finding.path.empty()) {
        text += ", at " + excerpt(finding.path);
    }
    if (!finding.expected.empty()) {
        // Of this program's making, such as all the folders that were searched.
        text += ", expected " + ut::encodeUtf8(finding.expected);
    }
    if (!finding.found.empty()) {
        text += ", found \"" + excerpt(finding.found) + "\"";
    }
    return printable(text + "; " + finding.rule.remedy);
}

void FindingList::add(Finding finding) {
    const bool isError = finding.severity == Severity::Error;
    verdict_ = worse(verdict_, isError ? ExitCode::Error : ExitCode::Warnings);
    if (list_.size() < most) {
        list_.push_back(std::move(finding));
    } else {
        ++omitted_;
    }
}

void FindingList::add(const PiaFinding& finding, Severity severity) {
    add({.rule = {piaCodeWord(finding.code), piaCodeMessage(finding.code), remedyOf(finding.code)},
         .severity = severity,
         .offset = finding.offset,
         .line = finding.line,
         .path = finding.path,
         .expected = finding.expected,
         .found = finding.found});
}

void FindingList::addWarnings(const PiaReport& report) {
    for (const PiaFinding& finding : report.warnings()) {
        add(finding, Severity::Warning);
    }
    omitted_ += report.warningCount() - report.warnings().size();
}

void FindingList::locate(const PiaInput& input) {
    for (Finding& finding : list_) {
        if (!finding.line && !finding.offset && !finding.path.empty()) {
            if (const std::uint32_t line = piaLineOf(*input.root(), finding.path); line != 0) {
                finding.line = line;
            }
        }
    }
}

}  // namespace platen

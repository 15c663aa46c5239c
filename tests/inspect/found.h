/// What a check finds, as tests expect it.
#pragma once

#include <sstream>

#include <platen/inspect.h>
#include <platen/utcore.h>
#include "tests/support/trees.h"

inline std::string lineOf(const std::string& body, std::uint64_t number) {
    std::istringstream lines(body);
    std::string line;
    for (; number > 0 && std::getline(lines, line); --number) {
    }
    return line;
}

/// "warning WORD PATH|LINE OF THE BODY" for each finding, one to a line.
inline std::string foundIn(const platen::CheckResult& result, const std::string& body = {}) {
    std::string text;
    for (const platen::Finding& finding : result.findings) {
        text += text.empty() ? "" : "\n";
        text += finding.severity == platen::Severity::Error ? "error " : "warning ";
        text += piaCodeWord(finding.code) + (' ' + ut::encodeUtf8(finding.path));
        if (finding.line) {
            text += '|' + lineOf(body, *finding.line);
        }
    }
    return text;
}

/// The same for a version-2 file around a body.
inline std::string foundIn(const std::string& body, PiaKind kind,
                           const platen::CheckSettings& settings = {}) {
    return foundIn(platen::checkBytes(fileAround(body, kind), {}, settings), body);
}

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include <platen/audit.h>
#include <platen/utcore.h>
#include "inspect/compare_words.h"

namespace platen {
namespace {

using Json = nlohmann::ordered_json;

const char* severityWord(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

Json textsJson(const std::vector<std::wstring>& texts) {
    Json json = Json::array();
    for (const std::wstring& text : texts) {
        json.push_back(ut::encodePath(text));
    }
    return json;
}

Json findingJson(const AuditFinding& finding) {
    Json json;
    json["code"] = auditCodeWord(finding.code);
    json["severity"] = severityWord(finding.severity);
    json["files"] = textsJson(finding.files);
    json["folder"] = finding.folder;
    json["message"] = finding.message;
    json["details"] = Json::array();
    for (const AuditDetail& detail : finding.details) {
        json["details"].push_back({{"text", detail.text}, {"colors", detail.colors}});
    }
    json["omitted"] = finding.omitted;
    json["remedy"] = auditCodeRemedy(finding.code);
    json["command"] = finding.command.empty() ? Json() : textsJson(finding.command);
    return json;
}

Json noteJson(const AuditNote& note) {
    constexpr std::array<const char*, 2> words{"printers", "used-tables"};
    return {{"about", words[static_cast<std::size_t>(note.about)]}, {"text", note.text}};
}

Json summaryJson(const AuditResult& result) {
    Json json = Json::object();
    for (const AuditCode code : auditCodes()) {
        const auto count =
            std::count_if(result.findings.begin(), result.findings.end(),
                          [&](const AuditFinding& finding) { return finding.code == code; });
        if (count != 0) {
            json[auditCodeWord(code)] = count;
        }
    }
    return json;
}

}  // namespace

std::string describe(const AuditFinding& finding) {
    std::string line;
    if (!finding.files.empty()) {
        line = printableUtf8(finding.files.front()) + ": ";
    }
    return line + severityWord(finding.severity) + " [" + auditCodeWord(finding.code) + "] " +
           finding.message + "; " + auditCodeRemedy(finding.code);
}

std::string auditJson(const AuditResult& result) {
    Json json;
    json["schema"] = "platen.audit/1";
    json["folders"] = textsJson(result.folders);
    json["dots_per_inch"] = result.dotsPerInch;
    Json files;
    for (std::size_t kind = 0; kind < result.kinds.size(); ++kind) {
        files[kindWord(static_cast<FileKind>(kind))] = result.kinds[kind];
    }
    files["unreadable"] = result.unreadable;
    json["files"] = std::move(files);
    json["summary"] = summaryJson(result);
    json["findings"] = Json::array();
    for (const AuditFinding& finding : result.findings) {
        json["findings"].push_back(findingJson(finding));
    }
    json["notes"] = Json::array();
    for (const AuditNote& note : result.notes) {
        json["notes"].push_back(noteJson(note));
    }
    // Names of files need not be UTF-8, JSON must be.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen

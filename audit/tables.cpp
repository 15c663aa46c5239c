#include <set>
#include <string>

#include <platen/utcore.h>
#include "audit/joined.h"

namespace platen {
namespace {

bool isTable(const AuditData& data) {
    return data.kind == FileKind::Ctb || data.kind == FileKind::Stb;
}

AuditFinding findingAboutNoFile(AuditCode code, std::string message) {
    AuditFinding finding;
    finding.code = code;
    finding.message = std::move(message);
    return finding;
}

}  // namespace

void joinTables(const AuditedFiles& files, const AuditStandards& standards,
                const AuditSettings& settings, AuditResult& result) {
    std::set<std::wstring> present;
    std::size_t tables = 0;
    for (const auto& data : files) {
        present.insert(lowerCase(ut::fileNameOf(data->fullPath)));
        tables += isTable(*data) ? 1 : 0;
    }
    if (!settings.oneStandard) {
        for (const auto& [name, standard] : standards.files) {
            if (!present.contains(name)) {
                result.findings.push_back(
                    findingAboutNoFile(AuditCode::StandardMissing,
                                       "these folders have no file of the name of the standard " +
                                           nameInQuotes(standard.file)));
            }
        }
    }
    if (!settings.usedTables) {
        if (tables != 0) {
            result.notes.push_back(
                {AuditNote::About::UsedTables,
                 "nothing is said about tables that nobody names, since drawings name them and it "
                 "is not known which; there are " +
                     countInWords(tables, "table", "tables")});
        }
        return;
    }
    std::set<std::wstring> used;
    for (const std::wstring& table : *settings.usedTables) {
        const std::wstring name(ut::fileNameOf(table));
        if (name.empty() || !used.insert(lowerCase(name)).second) {
            continue;
        }
        if (!present.contains(lowerCase(name))) {
            result.findings.push_back(findingAboutNoFile(
                AuditCode::TableMissing,
                "drawings name the table " + nameInQuotes(name) + ", which no folder has"));
        }
    }
    for (const auto& data : files) {
        if (isTable(*data) && !used.contains(lowerCase(ut::fileNameOf(data->fullPath)))) {
            result.findings.push_back(
                findingAbout(*data, AuditCode::TableUnused, "no drawing of the list names it"));
        }
    }
}

}  // namespace platen

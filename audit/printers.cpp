#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <platen/utcore.h>
#include "audit/joined.h"

namespace platen {
namespace {

using Files = std::vector<const AuditData*>;

std::string configurations(std::size_t count) {
    return countInWords(count, "configuration", "configurations");
}

bool isOnServer(const std::wstring& printer) {
    return printer.size() > 2 && printer.starts_with(L"\\\\");
}

void findPrivateSettings(const AuditedFiles& files, const AuditSettings& settings,
                         AuditResult& result) {
    std::map<std::pair<std::wstring, std::int32_t>, Files> drivers;
    for (const auto& data : files) {
        if (data->privateBytes) {
            drivers[{lowerCase(data->privateBytes->driver), data->privateBytes->version}].push_back(
                data.get());
        }
    }
    for (const auto& [driver, users] : drivers) {
        const PrivateBytes& bytes = *users.front()->privateBytes;
        AuditFinding finding = findingAbout(
            users, AuditCode::PrivateSettings,
            configurations(users.size()) + (users.size() == 1 ? " keeps" : " keep") +
                " settings in bytes that only the driver " +
                (bytes.driver.empty() ? "without a name" : nameInQuotes(bytes.driver)) +
                ", version " + std::to_string(bytes.version) +
                ", reads; what is known besides them stays");
        for (const AuditData* user : users) {
            addDetail(finding,
                      {.text = nameInQuotes(user->file) + ": " +
                               countInWords(user->privateBytes->bytes, "byte", "bytes") +
                               "; besides them " + user->privateBytes->besides},
                      settings.mostDetails);
        }
        result.findings.push_back(std::move(finding));
    }
}

}  // namespace

AuditFinding findingAbout(const std::vector<const AuditData*>& files, AuditCode code,
                          std::string message) {
    AuditFinding finding = findingAbout(*files.front(), code, std::move(message));
    for (const AuditData* data : files) {
        if (data->file != finding.files.back()) {
            finding.files.push_back(data->file);
        }
    }
    return finding;
}

void joinPrinters(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result) {
    std::set<std::wstring> known;
    if (settings.printers) {
        std::transform(settings.printers->begin(), settings.printers->end(),
                       std::inserter(known, known.end()), lowerCase);
    }
    std::map<std::wstring, Files> printers;
    for (const auto& data : files) {
        if (!data->printer.empty()) {
            printers[lowerCase(data->printer)].push_back(data.get());
        }
    }
    std::size_t unasked = 0;
    for (const auto& [printer, users] : printers) {
        const std::string named =
            configurations(users.size()) +
            (users.size() == 1 ? " names the printer " : " name the printer ") +
            nameInQuotes(users.front()->printer);
        unasked += users.size();
        if (settings.printers && !known.contains(printer)) {
            result.findings.push_back(
                findingAbout(users, AuditCode::PrinterMissing, named + ", which is not there"));
        } else if (isOnServer(printer)) {
            result.findings.push_back(
                findingAbout(users, AuditCode::NetworkPrinter,
                             named + ", which another machine need not reach"));
        }
    }
    if (!settings.printers && unasked != 0) {
        result.notes.push_back({AuditNote::About::Printers,
                                "nothing is said about missing printers, since it is not known "
                                "which there are; " +
                                    configurations(unasked) + " need one"});
    }
    findPrivateSettings(files, settings, result);
}

}  // namespace platen

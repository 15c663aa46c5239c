#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

#include <platen/audit.h>
#include <platen/utcore.h>
#include "audit/facts.h"
#include "audit/joined.h"
#include "audit/record.h"

namespace platen {
namespace {

/// The header and the data disagree, though everything could be read.
bool isDamage(PiaCode code) {
    return code == PiaCode::Checksum || code == PiaCode::BodyLength ||
           code == PiaCode::CompressedLength || code == PiaCode::BytesAfterStream;
}

/// "pens.repaired.ctb" for "pens.ctb".
std::wstring repairedName(const std::wstring& file) {
    const std::wstring_view name = ut::fileNameOf(file);
    const std::size_t dot = name.rfind(L'.');
    const bool hasExtension = dot != std::wstring_view::npos && dot != 0;
    return hasExtension ? ut::withExtension(file, L"repaired." + std::wstring(name.substr(dot + 1)))
                        : file + L".repaired";
}

void noteDamage(const PiaInput& input, AuditData& data) {
    const PiaReport& report = input.report();
    if (report.failure()) {
        const bool isUnreadable = report.failure()->code == PiaCode::FileUnreadable;
        AuditFinding finding =
            findingAbout(data, isUnreadable ? AuditCode::Unreadable : AuditCode::Damaged,
                         report.failure()->describe());
        finding.severity = Severity::Error;
        if (!isUnreadable) {
            const std::wstring file = argumentOf(data.file);
            finding.command = {L"platen", L"repair", file, L"-o", repairedName(file)};
        }
        data.findings.push_back(std::move(finding));
        return;
    }
    const auto damage =
        std::find_if(report.warnings().begin(), report.warnings().end(),
                     [](const PiaFinding& warning) { return isDamage(warning.code); });
    if (damage != report.warnings().end()) {
        data.findings.push_back(findingAbout(data, AuditCode::Damaged, damage->describe()));
    }
}

}  // namespace

AuditRecord::AuditRecord() = default;
AuditRecord::AuditRecord(AuditRecord&&) noexcept = default;
AuditRecord& AuditRecord::operator=(AuditRecord&&) noexcept = default;
AuditRecord::~AuditRecord() = default;

std::size_t AuditResult::fileCount() const {
    return std::accumulate(kinds.begin(), kinds.end(), unreadable);
}

FolderAudit::FolderAudit(AuditSettings settings) : settings_(std::move(settings)) {
    auto standards = std::make_unique<AuditStandards>();
    for (const std::wstring& file : settings_.standards) {
        PiaInput input;
        if (input.open(file.c_str(), settings_.reading)) {
            standards->files.emplace(lowerCase(ut::fileNameOf(file)),
                                     AuditStandard{file, recognise(input).kind});
        }
    }
    standards_ = std::move(standards);
}

FolderAudit::~FolderAudit() = default;

AuditRecord FolderAudit::read(const std::wstring& file, std::size_t folder) const {
    PiaInput input;
    const bool isOpen = input.open(file.c_str(), settings_.reading);
    return look(input, isOpen, file, folder);
}

AuditRecord FolderAudit::readBytes(std::string_view bytes, const std::wstring& file,
                                   std::size_t folder) const {
    PiaInput input;
    const bool isOpen = input.openBytes(bytes, settings_.reading);
    return look(input, isOpen, file, folder);
}

AuditRecord FolderAudit::look(PiaInput& input, bool isOpen, const std::wstring& file,
                              std::size_t folder) const {
    AuditRecord record;
    record.data_ = std::make_unique<AuditData>();
    AuditData& data = *record.data_;
    data.file = file;
    data.folder = folder;
    data.fullPath = fullPathOf(file);
    if (!isOpen) {
        noteDamage(input, data);
        return record;
    }
    // No PMP is read: it is audited by itself.
    const Content content = readContent(input, {}, settings_.reading);
    data.kind = content.kind;
    data.contentBytes = input.body().size();
    data.contentHash = std::hash<std::string_view>()(input.body());
    noteDamage(input, data);
    compareWithStandard(input, *standards_, settings_, data);
    findNamesNotAscii(input, settings_, data);
    if (content.table) {
        findPensAlike(*content.table, settings_, data);
    }
    if (content.config) {
        noteConfiguration(*content.config, settings_, data);
    }
    if (content.parameters) {
        noteParameters(*content.parameters, data);
    }
    return record;
}

void FolderAudit::add(AuditRecord record) {
    if (record.data_) {
        records_.push_back(std::move(record.data_));
    }
}

AuditResult FolderAudit::finish() const {
    AuditResult result;
    result.folders = settings_.folders;
    result.dotsPerInch = settings_.dotsPerInch;
    for (const auto& data : records_) {
        if (data->kind) {
            ++result.kinds[static_cast<std::size_t>(*data->kind)];
        } else {
            ++result.unreadable;
        }
        std::copy(data->findings.begin(), data->findings.end(),
                  std::back_inserter(result.findings));
    }
    joinPmps(records_, settings_, result);
    joinPrinters(records_, settings_, result);
    joinNames(records_, settings_, result);
    joinTables(records_, *standards_, settings_, result);
    joinPapers(records_, settings_, result);
    std::stable_sort(result.findings.begin(), result.findings.end(),
                     [](const AuditFinding& one, const AuditFinding& other) {
                         return std::pair(one.folder, one.code) <
                                std::pair(other.folder, other.code);
                     });
    return result;
}

void keepCodes(AuditResult& result, std::span<const AuditCode> only,
               std::span<const AuditCode> ignored) {
    const auto isIn = [](std::span<const AuditCode> codes, AuditCode code) {
        return std::find(codes.begin(), codes.end(), code) != codes.end();
    };
    const auto isKept = [&](AuditCode code) {
        return (only.empty() || isIn(only, code)) && !isIn(ignored, code);
    };
    std::erase_if(result.findings,
                  [&](const AuditFinding& finding) { return !isKept(finding.code); });
    std::erase_if(result.notes, [&](const AuditNote& note) {
        return note.about == AuditNote::About::Printers
                   ? !isKept(AuditCode::PrinterMissing)
                   : !isKept(AuditCode::TableUnused) && !isKept(AuditCode::TableMissing);
    });
}

}  // namespace platen

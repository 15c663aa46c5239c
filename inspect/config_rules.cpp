#include "inspect/config_rules.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <platen/papers.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "inspect/lost_rules.h"
#include "inspect/paper_rules.h"

namespace platen {
namespace {

void checkPmp(const Content& content, FindingList& findings) {
    const PiaReport& report = content.pmpReport;
    const std::wstring path = L"meta/user_defined_model_pathname";
    for (const PiaFinding& warning : report.warnings()) {
        // The others are about the PMP itself, which is checked by itself.
        if (warning.code == PiaCode::NameAmbiguous) {
            findings.warn({.code = warning.code,
                           .path = path,
                           .expected = warning.expected,
                           .found = warning.found});
        }
    }
    if (!report.failure()) {
        return;
    }
    if (content.pmpPath.empty()) {
        findings.warn({.code = PiaCode::PmpMissing,
                       .path = path,
                       .expected = report.failure()->expected,
                       .found = report.failure()->found});
        return;
    }
    std::wstring reason;
    if (ut::decodeUtf8(report.failure()->describe(), reason)) {
        findings.warn({.code = PiaCode::PmpUnreadable,
                       .path = path,
                       .expected = L"a sound file at " + content.pmpPath + L" (" + reason + L")"});
    }
}

bool isBuiltInPaper(const CPlotCfg3& config, std::wstring_view name) {
    const bool pdf = CPlotCfg3::isBuiltInPDF(&config);
    const std::span papers(pdf ? wut::cPdfPapers : wut::cImagePapers,
                           pdf ? wut::cPdfPapersCount : wut::cImagePapersCount);
    return std::any_of(papers.begin(), papers.end(), [&](const wut::PaperSizeInfo& paper) {
        return name == paper.canonicalName;
    });
}

/// A printer's papers are not known here, nor are those of a PMP that is missing.
void checkPaperName(const Content& content, FindingList& findings) {
    const CPlotCfg3& config = *content.config;
    const std::wstring& name = config.media.size.name;
    if (config.builtInDevice() == nullptr || name.empty() || content.pmpReport.failure() ||
        isBuiltInPaper(config, name)) {
        return;
    }
    std::vector<CustomPaperSize> papers;
    config.getCustomPaperSizes(papers);
    bool known = std::any_of(papers.begin(), papers.end(), [&](const CustomPaperSize& paper) {
        return paper.globalName == name;
    });
    if (config.pmp() != nullptr && config.pmp()->mod.media.size) {
        const auto& sizes = config.pmp()->mod.media.size->papers;
        known = known || std::any_of(sizes.begin(), sizes.end(),
                                     [&](const auto& size) { return size.name == name; });
    }
    if (!known) {
        findings.warn({.code = PiaCode::PaperUnknown, .path = L"media/size/name", .found = name});
    }
}

bool isHex(std::wstring_view digits) {
    return digits.find_first_not_of(L"0123456789abcdefABCDEF") == std::wstring_view::npos;
}

/// Every binary value of the file: of those with one name the document keeps the last.
void checkBinaries(const PiaBlock& custom, FindingList& findings) {
    for (const PiaItem* item : custom.items) {
        if (item->type != PiaItemType::Block) {
            continue;
        }
        const auto& property = static_cast<const PiaBlock&>(*item);
        const PiaItem& value = *property.items[1];
        if (value.type != PiaItemType::Bin) {
            continue;
        }
        const std::wstring digits = static_cast<const PiaBin&>(value).value.str();
        std::wstring path = L"custom/";
        path.append(property.name.view()).append(1, L'/').append(value.name.view());
        if (!isHex(digits)) {
            findings.warn({.code = PiaCode::BinaryNotHex, .path = path, .found = digits});
        } else if (digits.size() % 2 != 0) {
            findings.warn({.code = PiaCode::BinaryOddLength,
                           .path = path,
                           .expected = L"two digits for each byte",
                           .found = std::to_wstring(digits.size()) + L" digits"});
        }
    }
}

/// The driver's part of a device mode is stored beside its length.
void checkPrivateData(const CCustomNode& custom, FindingList& findings) {
    int length = 0;
    std::wstring digits;
    if (!custom.get(length, L"dmDriverExtra") || !custom.getBin(digits, L"RawPrivateDeviceData")) {
        return;
    }
    const auto stored = static_cast<long long>(digits.size() / 2);
    if (digits.size() % 2 == 0 && stored != length) {
        findings.warn({.code = PiaCode::PrivateDataLength,
                       .path = L"custom",
                       .expected = std::to_wstring(length) + L" bytes, as dmDriverExtra says",
                       .found = std::to_wstring(stored) + L" bytes of RawPrivateDeviceData"});
    }
}

}  // namespace

void checkConfig(const PiaInput& input, const Content& content, FindingList& findings) {
    const CPlotCfg3& config = *content.config;
    const PiaBlock& root = *input.root();
    addLost(lostItems(root, config, input.report()), findings);
    checkPmp(content, findings);
    PaperLimits limits;
    config.getMaxPaperDimensions(limits.width, limits.height);
    checkChosenPaper(config.media, limits, findings);
    checkPaperName(content, findings);
    if (config.media.customPapers) {
        checkCustomPapers(input, config.media.customPapers->papers, limits, findings);
    }
    if (config.custom) {
        checkBinaries(static_cast<const PiaBlock&>(*root.findItem(L"custom", PiaItemType::Block)),
                      findings);
        checkPrivateData(*config.custom, findings);
    }
}

}  // namespace platen

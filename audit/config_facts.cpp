#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <platen/oda.h>
#include <platen/plotcfg.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "audit/facts.h"
#include "plotcfg/paper_units.h"
#include "plotcfg/pmp_papers.h"
#include "plotcfg/property_names.h"

namespace platen {
namespace {

AuditedPaper auditedPaper(const CustomPaperSize& paper) {
    const double scale = paper_units::millimetresPerUnit(paper.units);
    return {.name = paper.globalName,
            .nameForPeople = paper.localName.empty() ? paper.globalName : paper.localName,
            .pixels = paper.units == OdDbPlotSettings::kPixels,
            .width = paper.width * scale,
            .height = paper.height * scale,
            .left = paper.left * scale,
            .bottom = paper.bottom * scale,
            .right = paper.right * scale,
            .top = paper.top * scale};
}

/// Where programs look for the PMP of a configuration, and then in the audited folders.
std::wstring findPmp(const AuditData& data, const AuditSettings& settings) {
    OdArray<OdString> folders;
    folders.append(OdString(std::wstring(ut::folderOf(data.fullPath))));
    if (const std::wstring path = ut::getSetting(L"PlotCfgPath"); !path.empty()) {
        folders.append(OdString(path));
    }
    for (const std::wstring& folder : settings.folders) {
        folders.append(OdString(folder));
    }
    const std::wstring path = PlotModelParam::find(data.pmpName, folders);
    return path.empty() ? path : fullPathOf(path);
}

void notePath(std::string key, std::wstring_view path, bool withRoot, AuditData& data) {
    if (isAbsolutePath(path, withRoot)) {
        data.paths.push_back({.text = std::move(key) + ' ' + nameInQuotes(path)});
    }
}

void notePaths(const CPlotCfg3& config, AuditData& data) {
    notePath("meta/user_defined_model_basename", config.meta.userDefinedModelBasename, true, data);
    notePath("meta/driver_pathname", config.meta.driverPathname, true, data);
    notePath("io/pathname", config.io.pathname, true, data);
    if (config.custom) {
        for (const auto& [name, value] : config.custom->strings()) {
            notePath("custom property " + nameInQuotes(name), value, false, data);
        }
    }
}

/// What is kept outside the driver's bytes, and goes to any driver.
std::string settingsOutside(const CPlotCfg3& config) {
    const CMediaNode& media = config.media;
    const CResColorMemNode::CResolutionNode& resolution = config.resColorMem.resolution;
    std::string words =
        media.size.name.empty() ? "no paper" : "paper " + nameInQuotes(media.size.name);
    words += media.dmOrientation == 2 ? ", landscape" : ", portrait";
    words += ", " + countInWords(static_cast<std::size_t>(std::max(media.numberOfCopies, 0)),
                                 "copy", "copies");
    if (media.destination) {
        words += media.destination->collatingType == 1 ? ", collated" : ", not collated";
    }
    constexpr std::int32_t usualScale = 100;
    if (media.size.dmScale != usualScale) {
        words += ", scale " + std::to_string(media.size.dmScale) + " %";
    }
    words += config.resColorMem.dmColor == 2 ? ", colour" : ", monochrome";
    if (resolution.physResolutionX > 1) {
        words += ", " + numberInWords(resolution.physResolutionX) + " x " +
                 numberInWords(resolution.physResolutionY) + " dpi";
    }
    constexpr std::pair<const wchar_t*, const char*> numbers[] = {
        {plot_config::defaultSource, "paper source"},
        {plot_config::mediaType, "media type"},
        {plot_config::trueTypeOption, "TrueType option"}};
    for (const auto& [key, label] : numbers) {
        long value = 0;
        if (config.custom->get(value, key)) {
            words += std::string(", ") + label + ' ' + std::to_string(value);
        }
    }
    return words;
}

void notePrivateBytes(const CPlotCfg3& config, AuditData& data) {
    std::wstring digits;
    if (!config.custom || !config.custom->getBin(digits, plot_config::privateData) ||
        digits.empty()) {
        return;
    }
    const std::size_t bytes = digits.size() / 2;
    data.privateBytes = {.driver = config.meta.winDriverName,
                         .version = config.meta.dmDriverVersion,
                         .bytes = bytes,
                         .besides = settingsOutside(config)};
    int stated = 0;
    if (config.custom->get(stated, plot_config::driverExtra) && std::cmp_not_equal(stated, bytes)) {
        data.findings.push_back(findingAbout(
            data, AuditCode::PrivateSize,
            "it says that the driver has " + std::to_string(stated) +
                " private bytes (dmDriverExtra), but " + std::to_string(bytes) + " are stored"));
    }
}

}  // namespace

void noteConfiguration(const CPlotCfg3& config, const AuditSettings& settings, AuditData& data) {
    const bool isForDefault = config.meta.defaultSystemCfg.value_or(false);
    if (config.builtInDevice() == nullptr && !isForDefault) {
        data.printer = config.meta.winDeviceName;
    }
    data.chosenPaper = config.media.size.name;
    data.pmpName = config.meta.userDefinedModelPathname;
    if (!data.pmpName.empty()) {
        data.pmpPath = findPmp(data, settings);
    }
    if (config.media.customPapers) {
        for (const CustomPaperSize& paper : config.media.customPapers->papers) {
            data.papers.push_back(auditedPaper(paper));
        }
    }
    notePaths(config, data);
    notePrivateBytes(config, data);
}

void noteParameters(const PlotModelParam& parameters, AuditData& data) {
    if (!parameters.udm.media) {
        return;
    }
    const UdmNode::MediaNode& media = *parameters.udm.media;
    std::map<std::wstring_view, const PmpDescriptionNode::PaperSizeDescription*> descriptions;
    for (const auto& description : media.description.papers) {
        descriptions.emplace(description.name, &description);
    }
    for (const auto& size : media.size.papers) {
        const auto found = descriptions.find(size.mediaDescriptionName);
        data.papers.push_back(auditedPaper(
            plot_config::fromPmp(size, found == descriptions.end() ? nullptr : found->second)));
    }
}

}  // namespace platen

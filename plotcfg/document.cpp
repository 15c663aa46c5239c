#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <platen/log.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "log/translated.h"
#include "plotcfg/document_keys.h"
#include "plotcfg/named_pmp.h"
#include "plotcfg/registered_printers.h"
#include "plotcfg/save_pmp.h"
#include "plotcfg/system_text.h"

using plot_config::printers;
using wut::translated;

namespace {

constexpr std::wstring_view pmpFolder = L"PMP";
constexpr std::wstring_view pmpExtension = L"pmp";

/// The first of the names that is not empty, without its folder.
std::wstring_view firstFileName(std::initializer_list<std::wstring_view> paths) {
    for (const std::wstring_view path : paths) {
        if (const std::wstring_view name = ut::fileNameOf(path); !name.empty()) {
            return name;
        }
    }
    return {};
}

/// What a print system says may have several lines, such as a printer's comment.
void putSystemTextsInOneLine(CPlotCfg3& config) {
    for (std::wstring* text :
         {&config.meta.configDescription, &config.meta.winDriverName, &config.media.size.name}) {
        *text = plot_config::oneLine(*text);
    }
}

}  // namespace

CPlotCfg3::CPlotCfg3() = default;
CPlotCfg3::CPlotCfg3(const CPlotCfg3&) = default;
CPlotCfg3& CPlotCfg3::operator=(const CPlotCfg3&) = default;
CPlotCfg3::CPlotCfg3(CPlotCfg3&&) noexcept = default;
CPlotCfg3& CPlotCfg3::operator=(CPlotCfg3&&) noexcept = default;
CPlotCfg3::~CPlotCfg3() = default;

CPlotCfg3* CPlotCfg3::read(const wchar_t* path, bool& printerChanged, PiaReport* report) {
    printerChanged = false;
    PiaInput input;
    std::unique_ptr<CPlotCfg3> config;
    if (input.open(path)) {
        config = fromInput(input, printerChanged);
    }
    if (config && config->builtInDevice_ == nullptr &&
        config->meta.defaultSystemCfg.value_or(false)) {
        printerChanged = false;
        config = createForDefaultPrinter(input.report());
    }
    if (config && !config->meta.userDefinedModelPathname.empty()) {
        config->readPmp(path, input.report());
    }
    if (const PiaBlock* root = input.root()) {
        input.report().locate(*root);
    }
    if (report != nullptr) {
        *report = std::move(input.report());
    }
    return config.release();
}

std::unique_ptr<CPlotCfg3> CPlotCfg3::fromInput(PiaInput& input, bool& printerChanged) {
    std::unique_ptr<CPlotCfg3> config(new CPlotCfg3);
    return config->init(input, printerChanged) ? std::move(config) : nullptr;
}

bool CPlotCfg3::init(PiaInput& input, bool& printerChanged) {
    const PiaBlock* root = input.root();
    if (root == nullptr) {
        return input.report().fail({.code = PiaCode::FileUnreadable});
    }
    constexpr int compressedVersion = 2;
    oldFormatInput_ = input.container().version == compressedVersion;
    if (!node_keys::read(*root, *this, {}, input.report())) {
        return false;
    }
    checkIfBuiltInDevice();
    printerChanged = builtInDevice_ == nullptr && resolvePrinterByDriver();
    initMaxPaperDimensions();
    return true;
}

std::unique_ptr<CPlotCfg3> CPlotCfg3::createForDefaultPrinter(PiaReport& report) {
    const std::wstring printer = printers().defaultPrinter();
    std::unique_ptr<CPlotCfg3> config(create(printer.c_str()));
    if (!config) {
        wut::logError(
            translated(L"Failed to create plot configuration for default printer %ls.").c_str(),
            printer.c_str());
        report.fail({.code = PiaCode::ValueInvalid,
                     .path = L"meta/default_system_cfg",
                     .expected = L"a default printer",
                     .found = printer});
    }
    return config;
}

void CPlotCfg3::readPmp(const wchar_t* path, PiaReport& report) {
    const std::wstring name = meta.userDefinedModelPathname;
    if (!plot_config::attachNamedPmp(*this, path, report)) {
        wut::logError(translated(L"Failed to read file '%ls'.").c_str(), name.c_str());
    }
}

CPlotCfg3* CPlotCfg3::create(const wchar_t* deviceName) {
    const std::wstring name = deviceName == nullptr ? L"" : deviceName;
    std::unique_ptr<CPlotCfg3> config = createForBuiltInDevice(name.c_str());
    if (!config) {
        config = createForPrinter(name);
    }
    if (config) {
        config->initMaxPaperDimensions();
    }
    return config.release();
}

std::unique_ptr<CPlotCfg3> CPlotCfg3::createForPrinter(const std::wstring& printer) {
    if (!printers().hasPrinter(printer)) {
        wut::logWarning(translated(L"Failed to open %ls.").c_str(), printer.c_str());
        return nullptr;
    }
    std::unique_ptr<CPlotCfg3> config(new CPlotCfg3);
    CMetaNode& meta = config->meta;
    meta.winDeviceName = printer;
    meta.friendlyNetName = printer;
    meta.shortNetName = printer;
    meta.driverPathname = L"gdiplot7.hdi";
    meta.driverVersion = L"not specified";
    meta.driverTagLine = L"Windows System Driver from Autodesk";
    meta.toolkitVersion = 1;
    meta.driverType = 1;
    if (!printers().fillNew(*config, printer)) {
        wut::logWarning(
            translated(L"Failed to initialize plot configuration from print data for %ls.").c_str(),
            printer.c_str());
        return nullptr;
    }
    putSystemTextsInOneLine(*config);
    return config;
}

bool CPlotCfg3::setToDefault() {
    bool changed = false;
    if (!printers().hasPrinter(meta.winDeviceName)) {
        return false;
    }
    const bool done = printers().reset(*this, changed);
    putSystemTextsInOneLine(*this);
    return done && changed;
}

bool CPlotCfg3::resolvePrinterByDriver() { return printers().resolveByDriver(*this); }

bool CPlotCfg3::writeToBlock(PiaBlock& root) const { return node_keys::write(*this, root); }

bool CPlotCfg3::write(const wchar_t* path, PiaReport* report) {
    PiaReport unread;
    PiaReport& reasons = report != nullptr ? *report : unread;
    reasons.clear();
    if (path == nullptr) {
        return reasons.fail({.code = PiaCode::FileUnwritable, .expected = L"a path"});
    }
    const bool pmpWritten = !pmp_ || writePmp(path);
    PiaFileOut file;
    file.setKind(PiaKind::Pc3);
    const bool done =
        file.write([this](PiaSink& root) { return node_keys::write(*this, root); }, path);
    reasons = file.report();
    if (!pmpWritten) {
        reasons.warn({.code = PiaCode::FileUnwritable,
                      .path = L"meta/user_defined_model_pathname",
                      .found = pmp_->userDefinedModelPathname});
    }
    return done;
}

std::wstring CPlotCfg3::placeForPmp(std::wstring_view path) const {
    if (!pmp_) {
        return {};
    }
    const std::wstring full = ut::fullPath(path);
    const std::wstring_view beside = ut::folderOf(full);
    const std::wstring below = ut::joinPath(beside, pmpFolder);
    const std::wstring_view name =
        firstFileName({pmp_->userDefinedModelPathname, meta.userDefinedModelPathname, full});
    return ut::withExtension(ut::joinPath(ut::folderExists(below) ? below : beside, name),
                             pmpExtension);
}

bool CPlotCfg3::writePmp(std::wstring_view path) {
    const std::wstring place = placeForPmp(path);
    const bool done = plot_config::savePmp(
        *this, path, [this](const std::wstring& file) { return pmp_->write(file.c_str()); },
        [](const std::wstring&) { return true; });
    if (!done) {
        pmp_->userDefinedModelPathname = place;
        pmp_->filePath = {};
    }
    return done;
}

void CPlotCfg3::attachPMP(PlotModelParam* pmp) {
    if (pmp != pmp_.get()) {
        pmp_.reset(pmp);
    }
    meta.userDefinedModelPathname = pmp == nullptr ? L"" : pmp->userDefinedModelPathname;
}

void CPlotCfg3::detachPMP() { attachPMP(nullptr); }

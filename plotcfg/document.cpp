#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <platen/log.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "plotcfg/document_keys.h"
#include "plotcfg/registered_printers.h"
#include "plotcfg/wx_text.h"

using plot_config::printers;
using plot_config::translated;

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

}  // namespace

CPlotCfg3::CPlotCfg3() = default;
CPlotCfg3::CPlotCfg3(CPlotCfg3&&) noexcept = default;
CPlotCfg3& CPlotCfg3::operator=(CPlotCfg3&&) noexcept = default;
CPlotCfg3::~CPlotCfg3() = default;

CPlotCfg3::CPlotCfg3(const CPlotCfg3& other)
    : meta(other.meta),
      media(other.media),
      io(other.io),
      resColorMem(other.resColorMem),
      custom(other.custom),
      pmp_(other.pmp_ ? other.pmp_->clone() : nullptr),
      builtInDevice_(other.builtInDevice_),
      devModeFields_(other.devModeFields_),
      ditherType_(other.ditherType_),
      duplex_(other.duplex_),
      oldFormatInput_(other.oldFormatInput_) {}

CPlotCfg3& CPlotCfg3::operator=(const CPlotCfg3& other) {
    *this = CPlotCfg3(other);
    return *this;
}

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
    OdArray<OdString> folders;
    folders.append(OdString(std::wstring(ut::folderOf(ut::fullPath(path)))));
    folders.append(OdString(ut::getSetting(L"PlotCfgPath")));
    // Attaching clears the name in the meta node.
    const std::wstring name = meta.userDefinedModelPathname;
    PiaReport why;
    if (PlotModelParam* found = PlotModelParam::read(name.c_str(), folders, &why)) {
        attachPMP(found);
        return;
    }
    wut::logError(translated(L"Failed to read file '%ls'.").c_str(), name.c_str());
    if (why.failure()) {
        PiaFinding finding = *why.failure();
        // What it says of a place is about the other file.
        finding.offset.reset();
        finding.line.reset();
        finding.path = L"meta/user_defined_model_pathname";
        report.warn(std::move(finding));
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
    return config;
}

bool CPlotCfg3::setToDefault() {
    bool changed = false;
    return printers().hasPrinter(meta.winDeviceName) && printers().reset(*this, changed) && changed;
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
    const std::wstring_view beside = ut::folderOf(path);
    const std::wstring below = ut::joinPath(beside, pmpFolder);
    const std::wstring_view name =
        firstFileName({pmp_->userDefinedModelPathname, meta.userDefinedModelPathname, path});
    return ut::withExtension(ut::joinPath(ut::folderExists(below) ? below : beside, name),
                             pmpExtension);
}

bool CPlotCfg3::writePmp(std::wstring_view path) {
    const std::wstring own = pmp_->filePath.text();
    bool done = !own.empty() && pmp_->write(own.c_str());
    if (!done) {
        const std::wstring place = placeForPmp(path);
        pmp_->filePath = OdString(place);
        pmp_->userDefinedModelPathname = place;
        done = pmp_->write(place.c_str());
        if (!done) {
            pmp_->filePath = {};
        }
    }
    if (!pmp_->filePath.isEmpty()) {
        meta.userDefinedModelPathname = pmp_->filePath.text();
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

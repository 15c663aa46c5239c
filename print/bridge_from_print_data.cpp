#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include <platen/pia_report.h>
#include <platen/plotcfg.h>
#include <platen/print.h>
#include <platen/utcore.h>
#include "plotcfg/property_names.h"
#include "print/hex_text.h"
#include "print/spooler_data.h"
#include "print/take.h"

using print_bridge::take;
using wut::oneLine;

namespace {

constexpr std::int32_t dmColorOn = 2;
constexpr std::int32_t dmColorOff = 1;
/// From this number on papers are the driver's own.
constexpr short firstOwnPaper = 256;

std::wstring pathOf(const wchar_t* property) { return std::wstring(L"custom/") + property; }

bool missing(const wchar_t* property, PiaReport& report) {
    return report.fail({.code = PiaCode::KeyMissing, .path = pathOf(property)});
}

/// Gives a number that must be there another value.
bool takeNumber(CCustomNode& custom, const wchar_t* name, int value, bool& changed,
                PiaReport& report) {
    int old = 0;
    const bool same = custom.get(old, name) && old == value;
    if (!custom.set(value, name, false)) {
        return missing(name, report);
    }
    changed = changed || !same;
    return true;
}

/// Stores a number that a new configuration does not have yet.
bool storeNumber(CCustomNode& custom, const wchar_t* name, int value, bool newConfig, bool& changed,
                 PiaReport& report) {
    int old = 0;
    if (!newConfig && !changed) {
        changed = !custom.get(old, name) || old != value;
    }
    return custom.set(value, name, newConfig) || missing(name, report);
}

bool takePrivateData(CCustomNode& custom, const wut::PrintData& data, bool& changed,
                     PiaReport& report) {
    const int length = data.GetPrivDataLen();
    if (!takeNumber(custom, plot_config::driverExtra, length, changed, report)) {
        return false;
    }
    if (length <= 0) {
        return true;
    }
    const std::span bytes(data.GetPrivData(), static_cast<std::size_t>(length));
    const std::wstring digits = wut::hexText(std::as_bytes(bytes));
    std::wstring old;
    if (!custom.getBin(old, plot_config::privateData)) {
        return missing(plot_config::privateData, report);
    }
    changed = changed || old != digits;
    return custom.setBin(digits, plot_config::privateData, false);
}

void takePort(CPlotCfg3& config, const CPrnHelper& printer, bool& changed) {
    std::wstring port;
    if (printer.getPorts(port)) {
        take(config.io.plotToFile,
             ut::equalNoCase(port, L"FILE") || ut::equalNoCase(port, L"FILE:"), changed);
    }
    CMetaNode& meta = config.meta;
    for (std::wstring* name : {&meta.localizedModelName, &meta.localizedFamilyName,
                               &meta.canonicalFamilyName, &meta.canonicalModelName}) {
        take(*name, std::wstring(L"System"), changed);
    }
}

/// A context that can be measured, of this printer and no other; otherwise null.
std::unique_ptr<wxPrinterDC> contextOf(wut::PrintData& data, const CPrnHelper& printer) {
    std::unique_ptr<wxPrinterDC> dc(data.createPrinterDC());
    const bool usable =
        dc && dc->IsOk() && ut::equalNoCase(data.GetPrinterName().ToStdWstring(), printer.name());
    return usable ? std::move(dc) : nullptr;
}

/// False when the printer does not have the paper.
bool findPaperName(const wut::PrintData& data, CPrnHelper& printer, std::wstring& name,
                   PiaReport& report) {
    short id = 0;
    if (!data.getDmPaperSize(id)) {
        const auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
        const int index = native == nullptr || native->formName.empty()
                              ? -1
                              : printer.findPaperName(native->formName.c_str());
        name = index < 0 ? L"" : oneLine(printer.getPaperName(static_cast<unsigned>(index)).text());
        return true;
    }
    if (id >= firstOwnPaper) {
        name = L"User" + std::to_wstring(id);
        return true;
    }
    const int index = printer.findPaperId(static_cast<unsigned short>(id));
    if (index < 0) {
        return report.fail({.code = PiaCode::PaperLeftOut,
                            .path = L"media/size/name",
                            .expected = L"a paper of the printer",
                            .found = std::to_wstring(id)});
    }
    name = oneLine(printer.getPaperName(static_cast<unsigned>(index)).text());
    return true;
}

bool takePaper(CMediaNode& media, const wut::PrintData& data, CPrnHelper& printer,
               const wxPrinterDC* dc, bool& changed, PiaReport& report) {
    std::wstring name;
    if (!findPaperName(data, printer, name, report)) {
        return false;
    }
    const bool renamed = !media.size.setName(name.c_str());
    if (renamed || media.emptyBounds()) {
        changed = true;
        media.setBounds(dc);
        if (dc == nullptr) {
            report.warn({.code = PiaCode::SettingLeftOut,
                         .path = L"media/size/media_description",
                         .expected = L"a printer whose paper can be measured",
                         .found = name});
        }
    }
    return true;
}

std::int16_t dmDuplexOf(const wut::PrintData& data) { return data.getDmDuplex(); }

bool takeSources(CCustomNode& custom, const wut::PrintData& data, bool newConfig, bool& changed,
                 PiaReport& report) {
    const bool hasMedia = data.GetMedia() != wxPRINTMEDIA_DEFAULT;
    const bool hasBin = data.GetBin() != wxPRINTBIN_DEFAULT;
    return (!hasMedia || storeNumber(custom, plot_config::mediaType, data.GetMedia(), newConfig,
                                     changed, report)) &&
           (!hasBin || storeNumber(custom, plot_config::defaultSource, data.getDmBin(), newConfig,
                                   changed, report));
}

void takeDestination(CMediaNode& media, const wut::PrintData& data, bool& changed) {
    if (!media.destination) {
        media.destination.emplace().name = L"Default";
        changed = true;
    }
    changed = media.destination->setCollating(data.GetCollate()) || changed;
}

void takeColors(CResColorMemNode& colors, const wut::PrintData& data, bool& changed) {
    const bool color = data.GetColour();
    take(colors.dmColor, color ? dmColorOn : dmColorOff, changed);
    if (color && !colors.linesOverwrite) {
        colors.linesOverwrite = true;
        changed = true;
    }
}

void takeDepth(CResColorMemNode& colors, int depth, bool& changed) {
    if (depth < 1 || depth == colors.colorDepth) {
        return;
    }
    // A depth of 32 gives one colour: kept, since readers of the files tell true colour by it.
    constexpr unsigned depths = 32;
    colors.colorDepth = depth;
    colors.numColors = static_cast<std::int32_t>(1U << (static_cast<unsigned>(depth) % depths));
    changed = true;
}

bool takeNative(CPlotCfg3& config, const wut::WindowsPrintNativeData& native, bool newConfig,
                bool& changed, PiaReport& report) {
    CCustomNode& custom = *config.custom;
    if (!takeNumber(custom, plot_config::modeSize, native.size, changed, report)) {
        return false;
    }
    take(config.meta.dmDriverVersion, std::int32_t{native.driverVersion}, changed);
    take(config.media.size.dmScale, std::int32_t{native.scale}, changed);
    if (!storeNumber(custom, plot_config::specVersion, native.specVersion, newConfig, changed,
                     report) ||
        (native.ttOption != 0 && !storeNumber(custom, plot_config::trueTypeOption, native.ttOption,
                                              newConfig, changed, report))) {
        return false;
    }
    CResColorMemNode& colors = config.resColorMem;
    take(colors.icmMethod, static_cast<std::int32_t>(native.icmMethod), changed);
    take(colors.icmIntent, static_cast<std::int32_t>(native.icmIntent), changed);
    if (native.ditherType <= 1) {
        take(colors.numUnditheredColors, colors.numColors, changed);
    }
    return true;
}

}  // namespace

bool CPlotCfg3::fromPrintData(wut::PrintData& data, const std::wstring& printerName, bool newConfig,
                              bool& changed, PiaReport* report) {
    PiaReport unread;
    PiaReport& reasons = report != nullptr ? *report : unread;
    reasons.clear();
    changed = false;
    if (!ut::equalNoCase(meta.winDeviceName, printerName)) {
        return reasons.fail({.code = PiaCode::ValueInvalid,
                             .path = L"meta/win_device_name",
                             .expected = printerName,
                             .found = meta.winDeviceName});
    }
    const auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    if (native == nullptr) {
        return reasons.fail({.code = PiaCode::PrintDataUnusable});
    }
    if (!custom) {
        return missing(plot_config::driverExtra, reasons);
    }
    if (!takePrivateData(*custom, data, changed, reasons)) {
        return false;
    }
    CPrnHelper printer(meta.winDeviceName.c_str());
    if (!printer.isValid()) {
        return reasons.fail({.code = PiaCode::PrinterMissing,
                             .path = L"meta/win_device_name",
                             .found = meta.winDeviceName});
    }
    if (newConfig) {
        takePort(*this, printer, changed);
    }
    std::unique_ptr<wxPrinterDC> dc = contextOf(data, printer);
    if (!takePaper(media, data, printer, dc.get(), changed, reasons)) {
        return false;
    }
    take(media.numberOfCopies, std::int32_t{data.GetNoCopies()}, changed);
    take(duplex_, dmDuplexOf(data), changed);
    if (!takeSources(*custom, data, newConfig, changed, reasons)) {
        return false;
    }
    if (const std::int32_t orientation = data.GetOrientation();
        media.dmOrientation != orientation) {
        media.dmOrientation = orientation;
        media.swapBounds();
        changed = true;
    }
    takeDestination(media, data, changed);
    takeColors(resColorMem, data, changed);
    changed = resColorMem.resolution.set(data, dc.get()) || changed;
    if (dc) {
        takeDepth(resColorMem, dc->GetDepth(), changed);
        dc.reset();
    }
    if (std::wstring driver; printer.getPrinterDriver(driver)) {
        take(meta.winDriverName, oneLine(driver), changed);
    }
    if (!takeNative(*this, *native, newConfig, changed, reasons)) {
        return false;
    }
    take(ditherType_, native->ditherType, changed);
    const wut::DEVMODE_RAII mode(data);
    take(devModeFields_,
         static_cast<const DEVMODEW*>(mode) == nullptr ? 0 : std::uint32_t{mode->dmFields},
         changed);
    return true;
}

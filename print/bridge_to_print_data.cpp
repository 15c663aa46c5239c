#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <platen/papers.h>
#include <platen/pia_report.h>
#include <platen/plotcfg.h>
#include <platen/print.h>
#include <platen/utcore.h>
#include "plotcfg/property_names.h"
#include "print/hex_text.h"
#include "print/spooler_data.h"

namespace {

constexpr int dmColorOn = 2;

/// What the stored device mode comes to for the printer as it is now.
struct StoredMode {
    std::uint16_t size = 0;
    std::vector<std::byte> privateData;
    /// It does not fit the driver, which has to merge the settings itself.
    bool reconcile = false;
};

std::wstring pathOf(const wchar_t* property) { return std::wstring(L"custom/") + property; }

/// A number that must be there and cannot be negative.
bool readSize(const CCustomNode& custom, const wchar_t* name, int& value, PiaReport& report) {
    if (!custom.get(value, name)) {
        return report.fail({.code = PiaCode::KeyMissing, .path = pathOf(name)});
    }
    return value >= 0 || report.fail({.code = PiaCode::ValueInvalid,
                                      .path = pathOf(name),
                                      .expected = L"a number of bytes",
                                      .found = std::to_wstring(value)});
}

/// Takes the stored private bytes when they fit the driver's device mode.
bool readStoredMode(const CCustomNode& custom, const CPrnHelper& printer, StoredMode& mode,
                    PiaReport& report) {
    int extra = 0;
    int size = 0;
    if (!readSize(custom, plot_config::driverExtra, extra, report) ||
        !readSize(custom, plot_config::modeSize, size, report)) {
        return false;
    }
    mode.size = static_cast<std::uint16_t>(size);
    constexpr DWORD askSize = 0;
    const LONG needed = wut::spooler().documentProperties(
        printer.handle().get(), printer.name().c_str(), {}, nullptr, askSize);
    const std::int64_t stored = std::int64_t{size} + extra;
    if (needed != stored) {
        mode.reconcile = true;
        if (extra > 0) {
            report.warn({.code = PiaCode::PrivateDataLeftOut,
                         .path = pathOf(plot_config::privateData),
                         .expected = L"a device mode of " + std::to_wstring(needed) + L" bytes",
                         .found = std::to_wstring(stored) + L" bytes"});
        }
        return true;
    }
    if (extra == 0) {
        return true;
    }
    std::wstring digits;
    const std::size_t expected = static_cast<std::size_t>(extra) * 2;
    if (!custom.getBin(digits, plot_config::privateData)) {
        return report.fail({.code = PiaCode::KeyMissing, .path = pathOf(plot_config::privateData)});
    }
    if (digits.size() != expected) {
        return report.fail({.code = PiaCode::ValueInvalid,
                            .path = pathOf(plot_config::privateData),
                            .expected = std::to_wstring(expected) + L" hexadecimal digits",
                            .found = std::to_wstring(digits.size()) + L" digits"});
    }
    mode.privateData = wut::hexBytes(digits);
    return true;
}

void setPrivateData(wut::PrintData& data, std::vector<std::byte>& bytes) {
    data.SetPrivData(reinterpret_cast<char*>(bytes.data()), static_cast<int>(bytes.size()));
}

int numberOr0(const CCustomNode& custom, const wchar_t* name) {
    int value = 0;
    static_cast<void>(custom.get(value, name));
    return value;
}

void applyMedia(const CMediaNode& media, wut::PrintData& data, PiaReport& report) {
    data.SetOrientation(media.dmOrientation == wxLANDSCAPE ? wxLANDSCAPE : wxPORTRAIT);
    data.SetCollate(!media.destination || media.destination->collatingType == 1);
    // A device mode has 16 bits for it.
    if (media.numberOfCopies > 0 && media.numberOfCopies <= std::numeric_limits<short>::max()) {
        data.SetNoCopies(media.numberOfCopies);
    } else {
        report.warn({.code = PiaCode::SettingLeftOut,
                     .path = L"media/number_of_copies",
                     .expected = L"1 to 32767",
                     .found = std::to_wstring(media.numberOfCopies)});
    }
}

/// `fields` are the `dmFields` of the printer; 0 when they are not known.
void applyPaper(const std::wstring& name, std::uint32_t fields, CPrnHelper& printer,
                wut::PrintData& data, PiaReport& report) {
    const auto has = [&](std::uint32_t field) { return fields == 0 || (fields & field) != 0; };
    const int index = printer.findPaperName(name.c_str());
    int customId = 0;
    if (index < 0 && !wut::isCustomPaperSize(customId, name.c_str())) {
        if (!name.empty()) {
            report.warn({.code = PiaCode::PaperLeftOut, .path = L"media/size/name", .found = name});
        }
        return;
    }
    if (index >= 0 && has(DM_FORMNAME)) {
        wut::WindowsPrintNativeData::GetNativeData(data)->formName =
            printer.getPaperName(static_cast<unsigned>(index)).text();
    }
    if (!has(DM_PAPERSIZE)) {
        report.warn({.code = PiaCode::SettingLeftOut,
                     .path = L"media/size/name",
                     .expected = L"a printer that is told a paper size",
                     .found = name});
        return;
    }
    const auto id = index < 0 ? static_cast<unsigned short>(customId)
                              : printer.getPaperId(static_cast<unsigned>(index));
    data.setDmPaperSize(static_cast<short>(id), nullptr);
}

void compareDriver(const std::wstring& stored, const CPrnHelper& printer, PiaReport& report) {
    std::wstring driver;
    if (!stored.empty() && printer.getPrinterDriver(driver) &&
        !ut::equalNoCase(stored, wut::oneLine(driver))) {
        report.warn({.code = PiaCode::DriverDiffers,
                     .path = L"meta/win_driver_name",
                     .expected = driver,
                     .found = stored});
    }
}

}  // namespace

bool CPlotCfg3::toPrintData(wut::PrintData& data, PiaReport* report) const {
    PiaReport unread;
    PiaReport& reasons = report != nullptr ? *report : unread;
    reasons.clear();
    if (!custom) {
        return reasons.fail({.code = PiaCode::KeyMissing, .path = L"custom"});
    }
    if (meta.winDeviceName.empty()) {
        return reasons.fail({.code = PiaCode::KeyMissing, .path = L"meta/win_device_name"});
    }
    CPrnHelper printer(meta.winDeviceName.c_str());
    if (!printer.isValid()) {
        return reasons.fail({.code = PiaCode::PrinterMissing,
                             .path = L"meta/win_device_name",
                             .found = meta.winDeviceName});
    }
    auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    if (native == nullptr) {
        return reasons.fail({.code = PiaCode::PrintDataUnusable});
    }
    StoredMode mode;
    if (oldFormatInput_) {
        if (!readStoredMode(*custom, printer, mode, reasons)) {
            return false;
        }
    } else if (custom->binaries().contains(plot_config::privateData)) {
        reasons.warn({.code = PiaCode::PrivateDataLeftOut,
                      .path = pathOf(plot_config::privateData),
                      .expected = L"a version-2 file"});
    }
    compareDriver(meta.winDriverName, printer, reasons);
    setPrivateData(data, mode.privateData);
    data.SetPrinterName(meta.winDeviceName);
    data.setDriverName(meta.winDriverName);
    applyMedia(media, data, reasons);
    data.SetColour(resColorMem.dmColor == dmColorOn);
    data.setDmDuplex(duplex_);
    resColorMem.resolution.get(data);
    data.SetMedia(numberOr0(*custom, plot_config::mediaType));
    data.setDmBin(static_cast<short>(numberOr0(*custom, plot_config::defaultSource)));

    native->size = mode.size;
    native->driverVersion = static_cast<std::uint16_t>(meta.dmDriverVersion);
    native->scale = static_cast<std::int16_t>(media.size.dmScale);
    native->icmMethod = static_cast<std::uint32_t>(resColorMem.icmMethod);
    native->icmIntent = static_cast<std::uint32_t>(resColorMem.icmIntent);
    native->ditherType = ditherType_;
    native->specVersion = static_cast<std::uint16_t>(numberOr0(*custom, plot_config::specVersion));
    native->ttOption = static_cast<std::int16_t>(numberOr0(*custom, plot_config::trueTypeOption));
    applyPaper(media.size.name, devModeFields_, printer, data, reasons);
    data.setMergeColors(resColorMem.linesOverwrite && !*resColorMem.linesOverwrite);
    data.setTtfAsText(meta.truetypeAsText);
    return !mode.reconcile || data.ResolveConflicts() ||
           reasons.fail({.code = PiaCode::SettingsRefused, .found = meta.winDeviceName});
}

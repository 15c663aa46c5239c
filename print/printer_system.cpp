#include <set>
#include <string>

#include <platen/oda.h>
#include <platen/plotcfg.h>
#include <platen/print.h>
#include <platen/utcore.h>
#include "plotcfg/property_names.h"
#include "print/spooler_data.h"

using wut::oneLine;

namespace {

/// The driver of a printer as documents have it; empty when either is not to be had.
std::wstring driverOf(const CPrnHelper& printer) {
    std::wstring driver;
    static_cast<void>(printer.getPrinterDriver(driver));
    return oneLine(driver);
}

/// Stores the numbers of the device mode, and room for the driver's bytes, which `fromPrintData`
/// only replaces. False when there is no device mode.
bool describeDeviceMode(CCustomNode& custom, wut::PrintData& data) {
    const wut::DEVMODE_RAII mode(data);
    if (static_cast<const DEVMODEW*>(mode) == nullptr) {
        return false;
    }
    constexpr bool create = true;
    custom.set(int{mode->dmDriverExtra}, plot_config::driverExtra, create);
    if (mode->dmDriverExtra != 0) {
        constexpr std::size_t digitsPerByte = 2;
        custom.setBin(std::wstring(mode->dmDriverExtra * digitsPerByte, L'0'),
                      plot_config::privateData, create);
    }
    custom.set(int{mode->dmSize}, plot_config::modeSize, create);
    custom.set(int{mode->dmSpecVersion}, plot_config::specVersion, create);
    return true;
}

/// The form's name, the printer's name of its paper, or "User" and the number; empty for none.
std::wstring paperNameOf(const wut::PrintData& data, const std::wstring& printer) {
    const auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    if (native != nullptr && !native->formName.empty()) {
        return oneLine(native->formName);
    }
    short id = 0;
    if (!data.getDmPaperSize(id) || id < 0) {
        return {};
    }
    CPrnHelper helper(printer.c_str());
    const int index = helper.findPaperId(static_cast<unsigned short>(id));
    return index < 0 ? L"User" + std::to_wstring(id)
                     : oneLine(helper.getPaperName(static_cast<unsigned>(index)).text());
}

class InstalledPrinters final : public PrinterSystem {
public:
    std::wstring defaultPrinter() const override {
        constexpr bool useFirstIfNone = false;
        return wut::getDefaultSystemPrinter(useFirstIfNone).text();
    }

    bool hasPrinter(const std::wstring& name) const override {
        return static_cast<bool>(wut::PrinterHandle(OdString(name)));
    }

    bool fillNew(CPlotCfg3& config, const std::wstring& printer) const override {
        config.meta.configDescription = oneLine(wut::getPrinterComment(printer.c_str()).text());
        wut::PrintData data(printer.c_str());
        if (!describeDeviceMode(config.custom.emplace(), data)) {
            return false;
        }
        config.media.size.setName(paperNameOf(data, printer).c_str());
        constexpr bool newConfig = true;
        bool changed = false;
        return config.fromPrintData(data, config.meta.winDeviceName, newConfig, changed);
    }

    bool reset(CPlotCfg3& config, bool& changed) const override {
        constexpr bool newConfig = false;
        wut::PrintData data(config.meta.winDeviceName.c_str());
        // Print data without a printer have settings of no printer, which would replace the stored
        // ones.
        return !data.GetPrinterName().empty() &&
               config.fromPrintData(data, config.meta.winDeviceName, newConfig, changed);
    }

    bool resolveByDriver(CPlotCfg3& config) const override {
        CMetaNode& meta = config.meta;
        const CPrnHelper own(meta.winDeviceName.c_str());
        if (own.isValid() && ut::equalNoCase(driverOf(own), meta.winDriverName)) {
            return false;
        }
        if (meta.winDriverName.empty()) {
            return false;
        }
        OdArray<OdString> names;
        wut::getSystemPrinters(names);
        // A printer that is both local and shared is listed twice, and asked once.
        std::set<std::wstring> asked;
        for (const OdString& name : names) {
            if (!asked.insert(name.text()).second) {
                continue;
            }
            if (ut::equalNoCase(driverOf(CPrnHelper(name.c_str())), meta.winDriverName)) {
                meta.winDeviceName = name.text();
                return true;
            }
        }
        return false;
    }
};

}  // namespace

const PrinterSystem& wut::installedPrinters() {
    static const InstalledPrinters printers;
    return printers;
}

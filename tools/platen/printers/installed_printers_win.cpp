#include <cstdint>
#include <string>
#include <utility>

#include <platen/print.h>
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/print_session.h"

namespace cli::printers {
namespace {

/// Documents ask the installed printers while it lives.
class PrinterRegistration {
public:
    PrinterRegistration() : before_(registerPrinterSystem(&wut::installedPrinters())) {}
    PrinterRegistration(const PrinterRegistration&) = delete;
    PrinterRegistration& operator=(const PrinterRegistration&) = delete;
    ~PrinterRegistration() { registerPrinterSystem(before_); }

private:
    const PrinterSystem* before_;
};

}  // namespace

std::string printersFault() {
    return PrintSession().isOk() ? "" : "the print system of wxWidgets does not start";
}

std::optional<InstalledPrinter> askPrinter(const std::wstring& name) {
    const PrintSession session;
    CPrnHelper helper(name.c_str());
    if (!helper.isValid()) {
        return std::nullopt;
    }
    InstalledPrinter printer;
    static_cast<void>(helper.getPrinterDriver(printer.driver));
    printer.deviceModeBytes =
        static_cast<std::int64_t>(wut::getDevModeBytes(helper.handle(), name.c_str()));
    const auto count = static_cast<unsigned>(helper.paperCount());
    for (unsigned index = 0; index < count; ++index) {
        printer.papers.push_back(helper.getPaperName(index).text());
    }
    return printer;
}

bool moveByDriver(CPlotCfg3& config) {
    const PrintSession session;
    return wut::installedPrinters().resolveByDriver(config);
}

void applyToPrinter(const CPlotCfg3& config, PiaReport& report) {
    const PrintSession session;
    wut::PrintData data(config.meta.winDeviceName.c_str());
    static_cast<void>(config.toPrintData(data, &report));
}

std::unique_ptr<CPlotCfg3> configurationOf(const std::wstring& printer) {
    const PrintSession session;
    const PrinterRegistration registration;
    std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(printer.c_str()));
    // A printer may have the name of a built-in device.
    return config && config->builtInDevice() == nullptr ? std::move(config) : nullptr;
}

}  // namespace cli::printers

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

/// Starts the print system for each question.
class SessionPrinters final : public platen::InstalledPrinters {
public:
    std::optional<platen::InstalledPrinter> ask(const std::wstring& name) const override {
        const PrintSession session;
        return platen::installedPrinters().ask(name);
    }
    bool moveByDriver(CPlotCfg3& config) const override {
        const PrintSession session;
        return platen::installedPrinters().moveByDriver(config);
    }
    void apply(const CPlotCfg3& config, PiaReport& report) const override {
        const PrintSession session;
        platen::installedPrinters().apply(config, report);
    }
};

}  // namespace

std::string printersFault() {
    return PrintSession().isOk() ? "" : "the print system of wxWidgets does not start";
}

const platen::InstalledPrinters* installedPrinters() {
    static const SessionPrinters printers;
    return &printers;
}

std::optional<platen::InstalledPrinter> askPrinter(const std::wstring& name) {
    return installedPrinters()->ask(name);
}

std::unique_ptr<CPlotCfg3> configurationOf(const std::wstring& printer) {
    const PrintSession session;
    const PrinterRegistration registration;
    std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(printer.c_str()));
    // A printer may have the name of a built-in device.
    return config && config->builtInDevice() == nullptr ? std::move(config) : nullptr;
}

}  // namespace cli::printers

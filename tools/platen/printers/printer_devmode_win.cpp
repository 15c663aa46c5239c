#include <memory>
#include <string>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/print.h>
#include <platen/utcore.h>
#include "tools/platen/printers/print_session.h"
#include "tools/platen/printers/printer_names.h"
#include "tools/platen/printers/printing.h"
#include "tools/platen/words/devmode_text.h"

namespace cli::printers {

ExitCode showDevMode(const std::string& printer, bool json, const Console& console) {
    std::wstring name;
    if (!findPrinter(printer, name, console)) {
        return ExitCode::Error;
    }
    const wut::DevModePtr devMode(wut::getDevMode(name.c_str()));
    if (devMode == nullptr) {
        return fail(console, printer,
                    "its driver gives no device mode; see whether the printer can be reached");
    }
    words::printDevMode(*devMode, printer, json, console);
    return ExitCode::Ok;
}

ExitCode showDevModeOfConfiguration(const std::string& file, bool json, const Console& console) {
    PiaInput input;
    bool printerChanged = false;
    std::unique_ptr<CPlotCfg3> config;
    if (input.open(ut::decodePath(file).c_str())) {
        config = CPlotCfg3::fromInput(input, printerChanged);
    }
    if (!config) {
        return fail(console, file, input.report());
    }
    if (config->builtInDevice() != nullptr) {
        return fail(console, file,
                    "a configuration of a built-in device has no printer, and so no device mode");
    }
    const PrintSession session;
    if (!session.isOk()) {
        return fail(console, file, "the print system of wxWidgets does not start");
    }
    wut::PrintData data(config->meta.winDeviceName.c_str());
    PiaReport report;
    if (!config->toPrintData(data, &report)) {
        return fail(console, file, report);
    }
    wut::DEVMODE_RAII devMode(data);
    if (!devMode) {
        return fail(console, file, "its printer's driver gives no device mode");
    }
    words::printDevMode(*devMode.get(), file, json, console);
    return worse(warn(console, file, input.report()), warn(console, file, report));
}

}  // namespace cli::printers

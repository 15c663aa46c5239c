#include <string>

#include "print.h"
#include "tools/platen/devmode_text.h"
#include "tools/platen/printer_names.h"
#include "tools/platen/printing.h"

namespace platen {

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
    printDevMode(*devMode, printer, json, console);
    return ExitCode::Ok;
}

ExitCode showDevModeOfConfiguration(const std::string& file, bool /*json*/,
                                    const Console& console) {
    return fail(console, file, "configurations have no device mode here yet; name a printer");
}

}  // namespace platen

#include "tools/platen/printers/printing.h"

namespace cli::printers {
namespace {

ExitCode needsWindows(const std::string& about, const Console& console) {
    return fail(
        console, about,
        "printers can be asked on Windows only, since drivers and device modes are its; use "
        "the Windows program platen.exe");
}

}  // namespace

ExitCode listPrinters(bool /*json*/, const Console& console) { return needsWindows("", console); }

ExitCode listPapersOfPrinter(const std::string& printer, bool /*json*/, const Console& console) {
    return needsWindows(printer, console);
}

ExitCode showDevMode(const std::string& printer, bool /*json*/, const Console& console) {
    return needsWindows(printer, console);
}

ExitCode showDevModeOfConfiguration(const std::string& file, bool /*json*/,
                                    const Console& console) {
    return needsWindows(file, console);
}

}  // namespace cli::printers

/// What the commands say about printers. Only Windows' print system is known: on other systems each
/// of these fails with a message.
#pragma once

#include <string>

#include "tools/platen/console/console.h"

namespace cli::printers {

/// Lists the installed printers, each once.
ExitCode listPrinters(bool json, const Console& console);

/// Lists the papers that a printer has under its default settings.
ExitCode listPapersOfPrinter(const std::string& printer, bool json, const Console& console);

/// Prints a printer's default device mode.
ExitCode showDevMode(const std::string& printer, bool json, const Console& console);

/// Prints the device mode that the print data of a plot configuration give its printer.
ExitCode showDevModeOfConfiguration(const std::string& file, bool json, const Console& console);

}  // namespace cli::printers

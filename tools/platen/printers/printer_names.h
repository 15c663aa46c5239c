/// Installed printers by name.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console/console.h"

namespace cli::printers {

/// Each once, in the spooler's order. None on systems other than Windows.
std::vector<std::wstring> printerNames();

// Windows only, as what follows.
bool sameNoCase(const std::wstring& left, const std::wstring& right);

/// Decodes the name of a printer that can be opened. False after a message.
bool findPrinter(const std::string& printer, std::wstring& name, const Console& console);

}  // namespace cli::printers

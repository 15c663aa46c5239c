/// Installed printers by name (Windows).
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console.h"

namespace platen {

/// Each once, in the spooler's order.
std::vector<std::wstring> printerNames();

bool sameNoCase(const std::wstring& left, const std::wstring& right);

/// Decodes the name of a printer that can be opened. False after a message.
bool findPrinter(const std::string& printer, std::wstring& name, const Console& console);

}  // namespace platen

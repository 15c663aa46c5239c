/// Lists of names that other programs have made.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console/console.h"

namespace cli::files {

/// Reads the names in `file`, or in standard input for "-", one a line: UTF-8, UTF-16 with its
/// mark, as shells of Windows write it, or in the ANSI code page. Spaces around names do not
/// matter. False after a message.
bool readNames(const std::string& file, std::vector<std::wstring>& names, const Console& console);

}  // namespace cli::files

/// Where a command's data and messages go.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <string_view>

#include <platen/utcore.h>
#include "tools/platen/console/exit_code.h"

class PiaReport;

namespace cli::console {

struct Console {
    std::ostream& out;
    std::ostream& err;
    std::istream& in;
    /// A person watches `out`.
    bool terminal = false;
    /// A person watches `err`: progress is shown there.
    bool watched = false;
};

using ut::printable;

/// Writes the content of a file: as it stands into a pipe or a file, printable on a terminal.
void writeData(const Console& console, std::string_view text);

/// Prints "platen: FILE: REASON"; `file` may be empty. Returns `ExitCode::Error`.
ExitCode fail(const Console& console, std::string_view file, std::string_view reason);
/// The same with the failure of `report`.
ExitCode fail(const Console& console, std::string_view file, const PiaReport& report);

/// The same for something tolerated. Returns `ExitCode::Warnings`.
ExitCode warn(const Console& console, std::string_view file, std::string_view reason);
/// The same for the warnings of `report`, only the first of them one by one. `ExitCode::Ok` when
/// there is none.
ExitCode warn(const Console& console, std::string_view file, const PiaReport& report);

}  // namespace cli::console

namespace cli {

// Every room speaks of these.
using console::Console;
using console::fail;
using console::printable;
using console::warn;
using console::writeData;

}  // namespace cli

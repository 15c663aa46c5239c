/// The command `platen`, callable without a process of its own.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console/console.h"

namespace cli {

/// Runs one command line and returns its exit code (see `ExitCode`). `arguments` are UTF-8, without
/// the program's name; file names come as `ut::encodePath` gives them. Data goes to `out`,
/// messages to `err`; `in` is read where "-" stands for a file.
int run(const std::vector<std::string>& arguments, const Console& console);

}  // namespace cli

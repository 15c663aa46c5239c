/// The command `platen`, callable without a process of its own.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cli {

/// Runs one command line and returns its exit code (see `ExitCode`). `arguments` are UTF-8, without
/// the program's name; file names come as `ut::encodePath` gives them. Data goes to `out`,
/// messages to `err`. `terminal` says that a person watches `out`.
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
        bool terminal);

}  // namespace cli

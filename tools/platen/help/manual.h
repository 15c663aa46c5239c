/// Manual pages.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/help/outline.h"

namespace cli::help {

struct Page {
    /// "platen-style.1"
    std::string file;
    /// roff
    std::string text;
};

/// A page for the program, and one for each command.
std::vector<Page> manualOf(const Command& program);

}  // namespace cli::help

/// Writing a tree back in the form that it was read from.
#pragma once

#include <string>

#include "tools/platen/console/console.h"
#include "tools/platen/files/source.h"

namespace cli::files {

/// Writes the tree of `source` to `file`, and unless it `changed`, the very bytes that were read.
ExitCode writeSource(Source& source, bool changed, const std::string& file, const Console& console);

}  // namespace cli::files

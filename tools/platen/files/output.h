/// Writing result files. Every function reads back what it made before the old file is given up,
/// so that a destination is either the old file whole or a new one that can be read.
#pragma once

#include <string>
#include <string_view>

#include <platen/pia.h>
#include "tools/platen/console/console.h"

namespace cli::files {

/// Writes the tree as a version-2 file.
ExitCode writeCompressed(const PiaBlock& root, PiaKind kind, const std::string& file,
                         const Console& console);
/// Writes the tree as a version-3 file.
ExitCode writeJson(const PiaBlock& root, const std::string& file, const Console& console);
/// Writes the tree as bare body text in the ANSI code page.
ExitCode writeBodyText(const PiaBlock& root, const std::string& file, const Console& console);
/// Writes bytes that came out of a file that was read.
ExitCode writeBytes(std::string_view bytes, const std::string& file, const Console& console);

}  // namespace cli::files

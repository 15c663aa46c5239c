/// Writing result files, and saying how that went.
#pragma once

#include <string>
#include <string_view>

#include <platen/edit.h>
#include "tools/platen/console/console.h"

namespace cli::files {

/// Says why a file was not written, or what there is to know about it.
ExitCode tell(const platen::WriteResult& result, const std::string& file, const Console& console);

/// Where what is said goes when data go to `out`: not between them.
Console besideData(const std::string& out, const Console& console);

/// To standard output for "-".
ExitCode writeTree(const PiaBlock& root, platen::FileForm form, PiaKind kind,
                   const std::string& file, const Console& console);
/// Writes bytes that came out of a file that was read; to standard output for "-".
ExitCode writeBytes(std::string_view bytes, const std::string& file, const Console& console);

}  // namespace cli::files

/// The input of `convert`, `set` and others: a plotter file of either version, or bare body text.
#pragma once

#include <cstdint>
#include <string>

#include <platen/edit.h>
#include "tools/platen/console/console.h"

namespace cli::files {

/// Bytes of a body that a command reads; more is refused.
inline constexpr std::uint64_t usualMaxBody = PiaLimits{}.bodyBytes;

/// Reads standard input whole. False after a message when it is larger than `limit`.
bool readStandardInput(std::string& bytes, std::uint64_t limit, const Console& console);

/// Reads the bytes of `file`, or standard input for "-". False after a message.
bool readBytes(const std::string& file, std::string& bytes, std::uint64_t limit,
               const Console& console);

/// Reads `file`, or standard input for "-". False after a message.
bool readSource(const std::string& file, platen::SourceFile& source, const Console& console,
                const PiaReadOptions& options = {});

/// Writes the tree of `source` to `file` (see output.h), and unless it `changed`, the very bytes
/// that were read.
ExitCode writeSource(platen::SourceFile& source, bool changed, const std::string& file,
                     const Console& console);

}  // namespace cli::files

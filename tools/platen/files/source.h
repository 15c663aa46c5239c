/// The input of `convert` and `set`: a plotter file of either version, or bare body text.
#pragma once

#include <cstdint>
#include <string>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/console/console.h"

namespace cli::files {

/// Bytes of a body that a command reads; more is refused.
inline constexpr std::uint64_t usualMaxBody = PiaLimits{}.bodyBytes;

enum class SourceForm { Compressed, Json, BodyText };

struct Source {
    PiaInput input;
    SourceForm form = SourceForm::Compressed;
    /// The file as it stands.
    ut::ByteBuffer bytes;
};

/// How a file is read that may have a body of `bodyBytes`: the number of items that are accepted
/// grows with it, the depth does not.
PiaReadOptions readingUpTo(std::uint64_t bodyBytes);

/// Reads `file`. False after a message.
bool readSource(const std::string& file, Source& source, const Console& console,
                const PiaReadOptions& options = {});

}  // namespace cli::files

/// Getting the body out of a damaged file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <platen/edit_files.h>
#include "edit/repair_notes.h"

namespace platen {

/// The body of a damaged file, or as much of it as can be read.
struct RecoveredBody {
    FileForm form = FileForm::Compressed;
    std::string text;
    /// What the header says, damaged or not.
    std::optional<PiaKind> kind;
    /// The end of the body is missing, so that its last line may be.
    bool torn = false;
};

/// Empty when there is no body within the limits; `reason` then says which, as a sentence.
std::optional<RecoveredBody> recoverBody(std::string_view file, const PiaLimits& limits,
                                         RepairNotes& notes, const char*& reason);

/// A sound file around body text.
std::string containerAround(std::string_view body, PiaKind kind);

/// The file with the one byte put right that is wrong, missing or too much after its header, if the
/// checksum over the compressed data says which it is; `assumption` then says it, too.
std::optional<std::string> withByteCorrected(std::string_view file, const PiaLimits& limits,
                                             Assumption& assumption);

}  // namespace platen

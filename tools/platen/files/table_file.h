/// A plot style table that is to be shown or changed.
#pragma once

#include <string>

#include <platen/edit.h>
#include "tools/platen/console/console.h"
#include "tools/platen/files/destination.h"

namespace cli::files {

/// Why a change was refused, with what was probably meant; empty when it was made.
std::string reasonOf(const platen::EditResult& done);

/// A file and the editor of its table.
struct TableFile {
    platen::SourceFile source;
    platen::TableEditor editor{source};

    /// `Error` after a message.
    ExitCode open(const std::string& file, const Console& console);
    /// A fresh table instead of a file's.
    ExitCode make(bool byColour, const Console& console);
    /// Writes the table as it is now.
    ExitCode store(const std::string& file, const Destination& destination, const Console& console);
};

}  // namespace cli::files

/// What a move costs, as people read it.
#pragma once

#include <iosfwd>
#include <string>

#include <platen/house.h>
#include "tools/platen/console/console.h"

namespace cli::words {

/// "printer \"A\" -> \"B\"".
std::string changeInWords(const platen::MovedDocument::Change& change);

/// "written", or what would be done in a dry run.
std::string restoredInWords(const platen::RestoredFile& restored, bool dryRun);

/// Prints the losses of a document, each in a line below its own, to `out`; those that somebody has
/// to look at are warnings instead, and `Warnings` is returned then.
ExitCode printLosses(const platen::MovedDocument& moved, const std::string& file, std::ostream& out,
                     const Console& console);

}  // namespace cli::words

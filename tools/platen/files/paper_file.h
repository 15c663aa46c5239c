/// Opening and saving files whose custom papers are shown or edited, in words.
#pragma once

#include <string>

#include <platen/edit.h>
#include "tools/platen/console/console.h"

namespace cli::files {

/// `Error` after a message, `Warnings` when something was tolerated.
ExitCode openPapers(const std::string& file, platen::PaperFile& papers,
                    platen::PaperFile::Purpose purpose, const Console& console);

/// Says where the documents that changed went, and what became of them.
ExitCode savePapers(const std::string& file, platen::PaperFile& papers, const Console& console);

}  // namespace cli::files

/// Papers as the commands show them.
#pragma once

#include <string>
#include <vector>

#include <platen/inspect_papers.h>
#include "tools/platen/console/console.h"

namespace cli::words {

using cli::Console;

using platen::ShownPaper;

/// "914.00 x 5000.00 mm"
std::string sizeInWords(const ShownPaper& paper);

/// Prints aligned columns for people.
void printPapers(const std::vector<ShownPaper>& papers, const Console& console);

/// Prints one JSON object a line. `source` is "pdf", "image" or "none", or the name of a file or of
/// a printer.
void printPapersAsJson(const std::vector<ShownPaper>& papers, const std::string& source,
                       const Console& console);

/// The Windows papers by their ids, in either form.
void printCatalogue(bool json, const Console& console);

}  // namespace cli::words

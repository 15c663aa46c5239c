/// Columns of text.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console/console.h"

namespace cli::words {

/// Prints rows of cells (UTF-8) so that the cells of a column begin below each other. Columns
/// without content but in the first row, the headings, are left out.
void printColumns(const std::vector<std::vector<std::string>>& rows, const Console& console);

}  // namespace cli::words

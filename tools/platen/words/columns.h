/// Columns of text.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console/console.h"

namespace platen {

/// Prints rows of cells (UTF-8) so that the cells of a column begin below each other. Columns
/// without content but in the first row, the headings, are left out.
void printColumns(const std::vector<std::vector<std::string>>& rows, const Console& console);

}  // namespace platen

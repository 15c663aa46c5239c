/// What a repair took for granted and lost, for people.
#pragma once

#include <string>

#include <platen/edit_repair.h>
#include "tools/platen/console/console.h"

namespace cli::words {

using cli::Console;

/// A line for each assumption and loss, of those that are alike only the first ones.
void printRepair(const std::string& file, const platen::RepairResult& result,
                 const Console& console);

/// 0 when nothing was wrong, 3 for what was repaired, 2 when nothing is usable.
ExitCode exitCodeOf(const platen::RepairResult& result);

}  // namespace cli::words

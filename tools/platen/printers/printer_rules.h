/// What `check` finds when it asks the printers.
#pragma once

#include <platen/plotcfg.h>
#include "tools/platen/findings.h"

namespace cli::printers {

/// Whether the printer of a configuration is there and takes what is stored. Built-in devices need
/// none.
void checkPrinter(const CPlotCfg3& config, platen::FindingList& findings);

}  // namespace cli::printers

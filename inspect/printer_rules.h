/// What a check finds when it asks the printers.
#pragma once

#include <platen/inspect.h>
#include "inspect/finding_list.h"

namespace platen {

/// Whether the printer of a configuration is there and takes what is stored. Built-in devices need
/// none.
void checkPrinter(const CPlotCfg3& config, const InstalledPrinters& printers,
                  FindingList& findings);

}  // namespace platen

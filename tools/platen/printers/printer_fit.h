/// What of a configuration a printer will not take.
#pragma once

#include <string>
#include <vector>

#include <platen/plotcfg.h>
#include "tools/platen/printers/installed_printers.h"

namespace cli::printers {

/// Sentences without their full stops; none when the printer suits.
std::vector<std::string> misfits(const CPlotCfg3& config, const InstalledPrinter& printer);

}  // namespace cli::printers

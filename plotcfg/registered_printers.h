/// The print system that documents ask.
#pragma once

#include <platen/plotcfg.h>

namespace plot_config {

/// The registered print system, or one without a printer.
const PrinterSystem& printers();

}  // namespace plot_config

/// The printers of this machine, as documents ask for them.
#pragma once

#include <platen/plotcfg.h>

namespace wut {

/// Lives as long as the library.
const PrinterSystem& installedPrinters();

}  // namespace wut

/// A device mode as the command shows it (Windows).
#pragma once

#include <wx/msw/wrapwin.h>

#include <string>

#include "tools/platen/console/console.h"

namespace cli::words {

/// Prints `devMode`, which has its private bytes behind it, as a text or as one JSON object.
/// `source` is whose it is.
void printDevMode(const DEVMODEW& devMode, const std::string& source, bool json,
                  const Console& console);

}  // namespace cli::words

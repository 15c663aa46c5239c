/// A printer's default settings in the form in which native print data keep them.
#pragma once

#include <string>

#include "print/global_memory.h"

namespace wut {

struct NativeSettings {
    /// A whole device mode; null when the settings cannot be had, and there are no names then.
    GlobalBlock devMode;
    /// A `DEVNAMES`, or null.
    GlobalBlock devNames;
};

/// Of the default printer.
NativeSettings defaultSettings();
/// Of a printer by its name.
NativeSettings settingsOf(const std::wstring& printer);

}  // namespace wut

/// wxWidgets below the documents: its log and its message catalogues.
#pragma once

#include <platen/platen_api.h>

namespace wut {

/// Documents log through wxWidgets from now on, and translate with the catalogues that it has
/// loaded. The shared library calls this when it is loaded, a program that is made of the static
/// libraries where it wants it.
PLATEN_API void registerWxLayer();
/// Messages are dropped again, and texts stay as they are.
PLATEN_API void unregisterWxLayer();

}  // namespace wut

/// Pixels, images and bitmaps.
#pragma once

#include "platen_api.h"

namespace wut {

/// True when `extension` (without its dot, any case) names a raster format that the application
/// accepts. The list is searched as one text, so that an ending of a listed extension ("peg", "if")
/// and the empty text are accepted, too.
[[nodiscard]] PLATEN_API bool isSupportedImageType(const wchar_t* extension);

}  // namespace wut

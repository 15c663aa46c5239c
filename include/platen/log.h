/// Messages for the user, through the wxWidgets log.
#pragma once

#include <platen/platen_api.h>

namespace wut {

/// Logs one record of level `wxLOG_Error`. `format` is a wide printf format ("%ls" for wide text).
/// The record carries the GUI utilities' source position, this function's name, the calling
/// thread and the current time; it goes out only when the level is enabled for the component.
/// May be called from any thread.
PLATEN_API void logError(const wchar_t* format, ...);

/// The same with level `wxLOG_Warning`.
PLATEN_API void logWarning(const wchar_t* format, ...);

/// The same with level `wxLOG_Message`.
PLATEN_API void logMessage(const wchar_t* format, ...);

}  // namespace wut

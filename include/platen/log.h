/// Messages for the user: where they go, and in which language.
///
/// Both are the host's business. The shared library brings wxWidgets' log and message catalogues
/// when it is loaded (`platen/wx_layer.h`); without them messages are dropped, since whatever fails
/// says why in its report, too, and texts are in English.
#pragma once

#include <cstdarg>
#include <string>

#include <platen/platen_api.h>

namespace wut {

/// Logs one record of level `Error`. `format` is a wide printf format ("%ls" for wide text).
/// In wxWidgets' log the record carries the GUI utilities' source position, this function's name,
/// the calling thread and the current time; it goes out only when the level is enabled for the
/// component. May be called from any thread.
PLATEN_API void logError(const wchar_t* format, ...);

/// The same with level `Warning`.
PLATEN_API void logWarning(const wchar_t* format, ...);

/// The same with level `Message`.
PLATEN_API void logMessage(const wchar_t* format, ...);

/// How bad a record is.
enum class LogLevel { Error, Warning, Message };

/// The place in the source that a record names.
struct LogPlace {
    /// Texts are borrowed.
    ///@{
    const char* file;
    int line;
    const char* function;
    ///@}
};

/// Takes one record, on the thread that logs it.
using LogTarget = void (*)(LogLevel level, const LogPlace& place, const wchar_t* format,
                           std::va_list arguments);

/// From now on records go to `target`, or nowhere when it is null. Returns the one before.
PLATEN_API LogTarget registerLogTarget(LogTarget target);

/// Gives a text in the user's language, or as it is.
using Translator = std::wstring (*)(const wchar_t* text);

/// From now on texts for the user go through `translator`, or stay as they are when it is null.
/// Returns the one before. The descriptions of the built-in devices are translated when the library
/// is loaded and keep the language of that moment.
PLATEN_API Translator registerTranslator(Translator translator);

}  // namespace wut

#include <platen/log.h>

#include <wx/log.h>

#include <cstdarg>

namespace wut {

namespace {

/// The place that records name, which is the GUI utilities' own: what filters and readers of logs
/// know these messages by. It stays, wherever these functions move.
constexpr const char* sourceFile = "src/gui/wxutils/imp/wut_gui";

void log(wxLogLevel level, int line, const char* function, const wchar_t* format,
         std::va_list arguments) {
    // Systems differ in what "%s" in a wide format takes; wxFormatString makes it wide text on all.
    const wxFormatString portable(format);
    wxLogger(level, sourceFile, line, function, wxLOG_COMPONENT)
        .LogV(wxString(static_cast<const wchar_t*>(portable)), arguments);
}

}  // namespace

void logError(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    log(wxLOG_Error, 207, "wut::logError", format, arguments);
    va_end(arguments);
}

void logWarning(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    log(wxLOG_Warning, 215, "wut::logWarning", format, arguments);
    va_end(arguments);
}

void logMessage(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    log(wxLOG_Message, 223, "wut::logMessage", format, arguments);
    va_end(arguments);
}

}  // namespace wut

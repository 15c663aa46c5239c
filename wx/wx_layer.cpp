#include <platen/wx_layer.h>

#include <wx/log.h>
#include <wx/string.h>
#include <wx/translation.h>

#include <platen/log.h>

namespace wut {

namespace {

wxLogLevel wxLevel(LogLevel level) {
    switch (level) {
        case LogLevel::Error:
            return wxLOG_Error;
        case LogLevel::Warning:
            return wxLOG_Warning;
        case LogLevel::Message:
            return wxLOG_Message;
    }
    return wxLOG_Error;
}

void logToWx(LogLevel level, const LogPlace& place, const wchar_t* format, std::va_list arguments) {
    // Systems differ in what "%s" in a wide format takes; wxFormatString makes it wide text on all.
    const wxFormatString portable(format);
    wxLogger(wxLevel(level), place.file, place.line, place.function, wxLOG_COMPONENT)
        .LogV(wxString(static_cast<const wchar_t*>(portable)), arguments);
}

std::wstring translatedByWx(const wchar_t* text) { return wxGetTranslation(text).ToStdWstring(); }

}  // namespace

void registerWxLayer() {
    registerLogTarget(logToWx);
    registerTranslator(translatedByWx);
}

void unregisterWxLayer() {
    registerLogTarget(nullptr);
    registerTranslator(nullptr);
}

}  // namespace wut

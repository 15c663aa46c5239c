#include <platen/log.h>

#include <atomic>
#include <cstdarg>

namespace wut {

namespace {

/// In a structure, since the type of a list of arguments has attributes on Windows, which are lost
/// where it is a template's argument.
struct Registered {
    LogTarget target = nullptr;
};
constinit std::atomic<Registered> registered = Registered{};

/// The place that records name is the GUI utilities' own: what filters and readers of logs know
/// these messages by. It stays, wherever these functions move.
void log(LogLevel level, int line, const char* function, const wchar_t* format,
         std::va_list arguments) {
    if (const LogTarget target = registered.load().target) {
        target(level, {"src/gui/wxutils/imp/wut_gui", line, function}, format, arguments);
    }
}

}  // namespace

LogTarget registerLogTarget(LogTarget target) { return registered.exchange({target}).target; }

void logError(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    log(LogLevel::Error, 207, "wut::logError", format, arguments);
    va_end(arguments);
}

void logWarning(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    log(LogLevel::Warning, 215, "wut::logWarning", format, arguments);
    va_end(arguments);
}

void logMessage(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    log(LogLevel::Message, 223, "wut::logMessage", format, arguments);
    va_end(arguments);
}

}  // namespace wut

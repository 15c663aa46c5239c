#include <platen/log.h>

#include <atomic>
#include <cstdarg>

namespace wut {

namespace {

constinit std::atomic<LogTarget> logTarget = nullptr;

/// The place that records name is the GUI utilities' own: what filters and readers of logs know
/// these messages by. It stays, wherever these functions move.
void log(LogLevel level, int line, const char* function, const wchar_t* format,
         std::va_list arguments) {
    if (const LogTarget target = logTarget) {
        target(level, {"src/gui/wxutils/imp/wut_gui", line, function}, format, arguments);
    }
}

}  // namespace

LogTarget registerLogTarget(LogTarget target) { return logTarget.exchange(target); }

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

#include "gui/os/formatting.h"

#include <wx/debug.h>
#include <wx/string.h>

#include <atomic>

#include <platen/gui_os.h>

namespace wut {

namespace {

std::atomic<FormattingErrorHandler> current = nullptr;
wxAssertHandler_t assertsBefore = nullptr;

void report(const wchar_t* reason) {
    if (const FormattingErrorHandler handler = current) {
        handler(reason);
    }
}

/// Takes the checks of arguments against formats, which stand in one header of wxWidgets.
void onAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
              const wxString& message) {
    if (current.load() != nullptr && file.EndsWith("strvararg.h")) {
        report(message.wc_str());
    } else if (assertsBefore != nullptr) {
        assertsBefore(file, line, function, condition, message);
    }
}

}  // namespace

FormattingErrorHandler setFormattingErrorHandler(FormattingErrorHandler handler) {
    const FormattingErrorHandler previous = current.exchange(handler);
    if (handler != nullptr && previous == nullptr) {
        assertsBefore = wxSetAssertHandler(onAssert);
        hookFormatting(report);
    } else if (handler == nullptr && previous != nullptr) {
        hookFormatting(nullptr);
        const wxAssertHandler_t last = wxSetAssertHandler(assertsBefore);
        if (last != onAssert) {
            // Somebody else's, set meanwhile, who may call the one before.
            wxSetAssertHandler(last);
        }
    }
    return previous;
}

}  // namespace wut

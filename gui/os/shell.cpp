#include <wx/init.h>
#include <wx/utils.h>

#include <cstdint>

#include <platen/gui_os.h>

namespace wut {

bool OsShell::isCancelled() { return false; }

OsShell::~OsShell() = default;

long winExecute(const OdString& command, int flags) {
    return static_cast<std::int32_t>(wxExecute(command.text(), flags));
}

bool LaunchDefaultBrowser(const OdString& url, bool flags) {
    return wxLaunchDefaultBrowser(url.text(), flags ? wxBROWSER_NEW_WINDOW : 0);
}

void initWxWidgets(bool start) {
    if (start) {
        int count = 0;
        wxEntryStart(count, static_cast<wxChar**>(nullptr));
    } else {
        wxEntryCleanup();
    }
}

void milliSleep(unsigned long milliseconds) { wxMilliSleep(milliseconds); }

}  // namespace wut

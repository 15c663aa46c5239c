#include <wx/app.h>
#include <wx/display.h>
#include <wx/window.h>

#include <platen/gui_windows.h>
#include "gui/windows/displays.h"

namespace wut {

Displays systemDisplays() {
    Displays displays;
    for (unsigned index = 0; index < wxDisplay::GetCount(); ++index) {
        const wxDisplay display(index);
        displays.all.push_back({display.GetGeometry(), display.GetClientArea()});
    }
    const wxWindow* top = wxTheApp != nullptr ? wxTheApp->GetTopWindow() : nullptr;
    const int ofTopWindow = top != nullptr ? wxDisplay::GetFromWindow(top) : wxNOT_FOUND;
    if (ofTopWindow != wxNOT_FOUND) {
        displays.ofTopWindow = static_cast<std::size_t>(ofTopWindow);
    }
    return displays;
}

void adjustWindowRectangleToDisplay(wxRect& rect, bool clientAreaOnly) {
    rect = fitToDisplay(rect, systemDisplays(), clientAreaOnly);
}

}  // namespace wut

#include "gui/look/theme_broadcast.h"

// wx/weakref.h relies on it.
#include <type_traits>

#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <vector>

#include <platen/gui_look.h>

wxDEFINE_EVENT(wxEVT_COLOR_THEME_CHANGED, wxColorThemeChangedEvent);

wxIMPLEMENT_DYNAMIC_CLASS(wxColorThemeChangedEvent, wxEvent);

wxColorThemeChangedEvent::wxColorThemeChangedEvent() : wxEvent(0, wxEVT_COLOR_THEME_CHANGED) {}

wxColorThemeChangedEvent::wxColorThemeChangedEvent(const wxColorThemeChangedEvent&) = default;

wxColorThemeChangedEvent::~wxColorThemeChangedEvent() = default;

wxEvent* wxColorThemeChangedEvent::Clone() const { return new wxColorThemeChangedEvent(*this); }

void wxColorThemeChangedEvent::BroadcastColorThemeChanged() {
    const std::vector<wxWeakRef<wxWindow>> windows(wxTopLevelWindows.begin(),
                                                   wxTopLevelWindows.end());
    for (const wxWeakRef<wxWindow>& window : windows) {
        if (window) {
            wut::sendThemeChanged(*window);
        }
        if (window) {
            wut::tellThemeChangedWithin(*window);
        }
        if (window) {
            window->Refresh();
        }
    }
    wut::tellThemeChangedOwned();
}

namespace wut {

void sendThemeChanged(wxWindow& window) {
    wxColorThemeChangedEvent event;
    event.SetEventObject(&window);
    window.HandleWindowEvent(event);
}

}  // namespace wut

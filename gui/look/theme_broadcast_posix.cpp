// wx/weakref.h relies on it.
#include <type_traits>

#include <wx/weakref.h>
#include <wx/window.h>

#include <vector>

#include "gui/look/theme_broadcast.h"

namespace wut {

void tellThemeChangedWithin(wxWindow& window) {
    const wxWindowList& list = window.GetChildren();
    const std::vector<wxWeakRef<wxWindow>> children(list.begin(), list.end());
    for (const wxWeakRef<wxWindow>& child : children) {
        // A dialog is a child of the frame below it, but has its own place in the broadcast.
        if (!child || child->IsTopLevel()) {
            continue;
        }
        sendThemeChanged(*child);
        if (child) {
            tellThemeChangedWithin(*child);
        }
    }
}

void tellThemeChangedOwned() {}

}  // namespace wut

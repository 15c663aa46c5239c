#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/translation.h>
#include <wx/xrc/xmlres.h>

#include <platen/gui_look.h>
#include "gui/look/held_log.h"

namespace wut {

namespace {

// Keys of translations, in which the name takes the place of "%ls".
constexpr const char* dialogFailed = wxTRANSLATE("Failed to load dialog \"%ls\" from XRC");
constexpr const char* wizardFailed = wxTRANSLATE("Failed to load wizard \"%ls\" from XRC");
constexpr const char* frameFailed = wxTRANSLATE("Failed to load frame \"%ls\" from XRC");
constexpr const char* panelFailed = wxTRANSLATE("Failed to load panel \"%ls\" from XRC");

/// Neither the name nor what somebody has translated is used as a format: both may hold anything.
wxString failure(const char* key, const wxString& name) {
    wxString message = wxGetTranslation(key);
    message.Replace("%ls", name, false);
    return message;
}

/// What `load(resources, name)` returns; when that is false or null, says so in a box.
template <class Load>
auto loadOrTell(const wchar_t* nameOrNull, const char* failed, Load load) {
    const wxString name(nameOrNull);
    const auto loaded = [&] {
        // The log would open a box of its own as soon as the application is idle.
        HeldLog log;
        auto result = load(*wxXmlResource::Get(), name);
        if (!result) {
            log.demote();
        }
        return result;
    }();
    if (!loaded) {
        errorBox(failure(failed, name).wc_str());
    }
    return loaded;
}

}  // namespace

bool loadDialog(wxDialog* dialog, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, dialogFailed, [&](wxXmlResource& resources, const wxString& known) {
        return dialog != nullptr && resources.LoadDialog(dialog, parent, known);
    });
}

bool loadWizard(wxDialog* wizard, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, wizardFailed, [&](wxXmlResource& resources, const wxString& known) {
        return wizard != nullptr && resources.LoadObject(wizard, parent, known, "wxWizard");
    });
}

bool loadFrame(wxFrame* frame, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, frameFailed, [&](wxXmlResource& resources, const wxString& known) {
        return frame != nullptr && resources.LoadFrame(frame, parent, known);
    });
}

bool loadPanel(wxPanel* panel, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, panelFailed, [&](wxXmlResource& resources, const wxString& known) {
        return panel != nullptr && parent != nullptr && resources.LoadPanel(panel, parent, known);
    });
}

wxPanel* loadPanel(wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, panelFailed, [&](wxXmlResource& resources, const wxString& known) {
        return parent == nullptr ? nullptr : resources.LoadPanel(parent, known);
    });
}

}  // namespace wut

#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/xrc/xmlres.h>

#include <platen/gui_look.h>
#include "gui/look/held_log.h"

namespace wut {

namespace {

constexpr const wchar_t* dialogFailed = L"Failed to load dialog \"%ls\" from XRC";
constexpr const wchar_t* wizardFailed = L"Failed to load wizard \"%ls\" from XRC";
constexpr const wchar_t* frameFailed = L"Failed to load frame \"%ls\" from XRC";
constexpr const wchar_t* panelFailed = L"Failed to load panel \"%ls\" from XRC";

/// What `load(resources, name)` returns; when that is false or null, says so in a box.
template <class Load>
auto loadOrTell(const wchar_t* nameOrNull, const wchar_t* failed, Load load) {
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
        errorBox(wxString::Format(failed, name).wc_str());
    }
    return loaded;
}

}  // namespace

bool loadDialog(wxDialog* dialog, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, dialogFailed, [&](wxXmlResource& resources, const wxString& known) {
        return resources.LoadDialog(dialog, parent, known);
    });
}

bool loadWizard(wxDialog* wizard, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, wizardFailed, [&](wxXmlResource& resources, const wxString& known) {
        return resources.LoadObject(wizard, parent, known, "wxWizard");
    });
}

bool loadFrame(wxFrame* frame, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, frameFailed, [&](wxXmlResource& resources, const wxString& known) {
        return resources.LoadFrame(frame, parent, known);
    });
}

bool loadPanel(wxPanel* panel, wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, panelFailed, [&](wxXmlResource& resources, const wxString& known) {
        return resources.LoadPanel(panel, parent, known);
    });
}

wxPanel* loadPanel(wxWindow* parent, const wchar_t* name) {
    return loadOrTell(name, panelFailed, [&](wxXmlResource& resources, const wxString& known) {
        return resources.LoadPanel(parent, known);
    });
}

}  // namespace wut

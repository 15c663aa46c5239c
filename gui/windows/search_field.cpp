#include <platen/gui_windows.h>

namespace wut {

wxIMPLEMENT_DYNAMIC_CLASS(QuorSearchCtrl, wxSearchCtrl);

QuorSearchCtrl::QuorSearchCtrl(wxWindow* parent, wxWindowID id, const wxString& value,
                               const wxPoint& pos, const wxSize& size, long style,
                               const wxValidator& validator, const wxString& name)
    : wxSearchCtrl(parent, id, value, pos, size, style, validator, name) {}

bool QuorSearchCtrl::Create(wxWindow* parent, wxWindowID id, const wxString& value,
                            const wxPoint& pos, const wxSize& size, long style,
                            const wxValidator& validator, const wxString& name) {
    return wxSearchCtrl::Create(parent, id, value, pos, size, style, validator, name);
}

bool QuorSearchCtrl::TryBefore(wxEvent& event) {
    const bool consumed = wxSearchCtrl::TryBefore(event);
    if (event.GetEventType() != wxEVT_TEXT) {
        return consumed;
    }
    ShowCancelButton(!GetValue().IsEmpty());
    return false;
}

}  // namespace wut

#include <wx/dirdlg.h>
#include <wx/msgdlg.h>
#include <wx/translation.h>

#include <platen/gui_look.h>
#include <platen/utcore.h>

namespace wut {

namespace {

constexpr int errorStyle = wxOK | wxICON_ERROR | wxCENTRE;

}  // namespace

int messageBox(const wchar_t* text, const wchar_t* caption, int style, wxWindow* parent, int x,
               int y) {
    const bool named = caption != nullptr && *caption != L'\0';
    return wxMessageBox(text, named ? wxString(caption) : wxString(ut::Config::regProduct()), style,
                        parent, x, y);
}

void errorBox(const wchar_t* text) { messageBox(text, L"", errorStyle, nullptr, -1, -1); }

bool selectFolderDlg(wxString& folder, wxWindow* parent) {
    wxDirDialog dialog(parent, wxGetTranslation("Select Folder"), folder);
    if (dialog.ShowModal() != wxID_OK) {
        return false;
    }
    folder = dialog.GetPath();
    return true;
}

BasePolicy::BasePolicy() = default;

BasePolicy::BasePolicy(const wxString& errorMessage) : errorMessage_(errorMessage) {}

BasePolicy::~BasePolicy() = default;

wxString BasePolicy::errorMessage() const {
    return errorMessage_ ? *errorMessage_ : wxGetTranslation("Bad input");
}

void BasePolicy::showError(wxWindow* parent) const {
    messageBox(errorMessage().wc_str(), L"", errorStyle, parent, -1, -1);
}

}  // namespace wut

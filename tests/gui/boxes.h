/// Modal dialogs that open during a test.
#pragma once

#include <gtest/gtest.h>
#include <wx/dirdlg.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>

#include <string>
#include <tuple>
#include <vector>

/// Answers every modal dialog at once while it lives, and keeps what message boxes and folder
/// choosers said.
class BoxCatcher : public wxModalDialogHook {
public:
    /// Text, caption or folder, style, parent.
    using Box = std::tuple<std::wstring, std::wstring, long, wxWindow*>;

    /// `answer` is the identifier of a button, `folder` what is chosen in folder choosers.
    explicit BoxCatcher(int answer = wxID_OK, const wxString& folder = wxString())
        : answer_(answer), folder_(folder) {
        Register();
    }
    ~BoxCatcher() override { Unregister(); }

    std::vector<Box> boxes;

protected:
    int Enter(wxDialog* dialog) override {
        if (const auto* box = dynamic_cast<wxMessageDialog*>(dialog)) {
            boxes.emplace_back(box->GetMessage().ToStdWstring(), box->GetCaption().ToStdWstring(),
                               box->GetMessageDialogStyle(), box->GetParent());
        } else if (auto* chooser = dynamic_cast<wxDirDialog*>(dialog)) {
            boxes.emplace_back(chooser->GetMessage().ToStdWstring(),
                               chooser->GetPath().ToStdWstring(), 0, chooser->GetParent());
            // Of what the user has chosen, not of where the system's chooser begins.
            chooser->wxDirDialogBase::SetPath(folder_);
        } else {
            ADD_FAILURE() << "another dialog: " << dialog->GetTitle();
        }
        return answer_;
    }

private:
    int answer_;
    wxString folder_;
};

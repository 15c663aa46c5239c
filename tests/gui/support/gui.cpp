#include "tests/gui/support/gui.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>

#include <string>

void settle() {
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    do {
        while (loop->Pending()) {
            loop->Dispatch();
        }
    } while (loop->ProcessIdle());
}

void leavePicture(std::string_view name, const wxImage& picture) {
    wxString folder;
    if (!wxGetEnv("PLATEN_TEST_PICTURES", &folder) || folder.empty()) {
        return;
    }
    const wxString path = folder + "/" + wxString::FromUTF8(name.data(), name.size()) + ".png";
    EXPECT_TRUE(picture.SaveFile(path, wxBITMAP_TYPE_PNG)) << path;
}

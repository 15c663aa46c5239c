#include "tests/support/gui.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>

#include <string>

namespace {

wxString pictureFolder() {
    wxString folder;
    wxGetEnv("PLATEN_TEST_PICTURES", &folder);
    return folder;
}

}  // namespace

void settle() {
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    do {
        while (loop->Pending()) {
            loop->Dispatch();
        }
    } while (loop->ProcessIdle());
}

bool picturesWanted() { return !pictureFolder().empty(); }

void leavePicture(std::string_view name, const wxImage& picture) {
    if (!picturesWanted()) {
        return;
    }
    const wxString path =
        pictureFolder() + "/" + wxString::FromUTF8(name.data(), name.size()) + ".png";
    EXPECT_TRUE(picture.SaveFile(path, wxBITMAP_TYPE_PNG)) << path;
}

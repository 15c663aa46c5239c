#include "tests/support/gui.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/evtloop.h>
#include <wx/window.h>

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

wxImage screenshot(const wxWindow& window) {
    const wxRect place = window.GetScreenRect();
    wxBitmap bitmap(place.GetSize());
    wxMemoryDC target(bitmap);
    wxScreenDC screen;
    target.Blit(wxPoint(0, 0), place.GetSize(), &screen, place.GetPosition());
    target.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
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

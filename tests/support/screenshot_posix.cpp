#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/window.h>

#include "tests/support/gui.h"

// Not from the screen: Cairo, below GTK, reads a place there once and keeps it, since it does not
// see who draws there.
wxImage screenshot(const wxWindow& window) {
    wxBitmap bitmap(window.GetSize());
    wxMemoryDC target(bitmap);
    wxWindowDC shown(const_cast<wxWindow*>(&window));
    target.Blit(wxPoint(0, 0), window.GetSize(), &shown, wxPoint(0, 0));
    target.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
}

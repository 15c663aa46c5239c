#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/window.h>

#include "tests/support/gui.h"

wxImage screenshot(const wxWindow& window) {
    const wxRect place = window.GetScreenRect();
    // Not 32 bits: what windows leave in the bits above colours would be read as alpha.
    wxBitmap bitmap(place.GetSize(), 24);
    wxMemoryDC target(bitmap);
    wxScreenDC screen;
    target.Blit(wxPoint(0, 0), place.GetSize(), &screen, place.GetPosition());
    target.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
}

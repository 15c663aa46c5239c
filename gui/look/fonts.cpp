#include <wx/dc.h>
#include <wx/font.h>
#include <wx/fontenum.h>
#include <wx/window.h>

#include <platen/gui_look.h>
#include "gui/look/font_face.h"

namespace wut {

bool setFace(wxFont& font, const wchar_t* face) {
    return isFontAvailable(face) && font.SetFaceName(face);
}

void setFace(wxWindow& window, const wchar_t* face) { setFaceOf(window, face); }

void setFace(wxDC& dc, const wchar_t* face) { setFaceOf(dc, face); }

bool isFontAvailable(const wchar_t* face) {
    return face != nullptr && *face != L'\0' && wxFontEnumerator::IsValidFacename(face);
}

bool setGuiFont(wxFont* font) { return setFace(*font, guiFontName(ut::EGuiFontName::Default)); }

void setGuiFont(wxWindow* window) { setFace(*window, guiFontName(ut::EGuiFontName::Default)); }

void setGuiFont(wxDC* dc) { setFace(*dc, guiFontName(ut::EGuiFontName::Default)); }

void setGuiFont(wxMenuItem* item) { setFace(*item, guiFontName(ut::EGuiFontName::Default)); }

void setFontSize(wxWindow* window, int pointSize, bool bold) {
    wxFont font = window->GetFont();
    font.SetPointSize(pointSize);
    if (bold) {
        font.SetWeight(wxFONTWEIGHT_BOLD);
    }
    window->SetFont(font);
}

void setFontBold(wxWindow* window, bool bold) {
    wxFont font = window->GetFont();
    font.SetWeight(bold ? wxFONTWEIGHT_BOLD : wxFONTWEIGHT_NORMAL);
    window->SetFont(font);
}

}  // namespace wut

#include <wx/dc.h>
#include <wx/font.h>
#include <wx/fontenum.h>
#include <wx/window.h>

#include <platen/gui_look.h>
#include "gui/look/font_face.h"

namespace wut {

namespace {

const wchar_t* guiFace() { return guiFontName(ut::EGuiFontName::Default); }

template <class Owner>
void setGuiFace(Owner* owner) {
    if (owner != nullptr) {
        setFace(*owner, guiFace());
    }
}

template <class Change>
void changeFont(wxWindow* window, Change change) {
    if (window != nullptr) {
        wxFont font = window->GetFont();
        change(font);
        window->SetFont(font);
    }
}

}  // namespace

bool setFace(wxFont& font, const wchar_t* face) {
    return isFontAvailable(face) && font.SetFaceName(face);
}

void setFace(wxWindow& window, const wchar_t* face) { setFaceOf(window, face); }

void setFace(wxDC& dc, const wchar_t* face) { setFaceOf(dc, face); }

bool isFontAvailable(const wchar_t* face) {
    return face != nullptr && *face != L'\0' && wxFontEnumerator::IsValidFacename(face);
}

bool setGuiFont(wxFont* font) { return font != nullptr && setFace(*font, guiFace()); }

void setGuiFont(wxWindow* window) { setGuiFace(window); }

void setGuiFont(wxDC* dc) { setGuiFace(dc); }

void setGuiFont(wxMenuItem* item) { setGuiFace(item); }

void setFontSize(wxWindow* window, int pointSize, bool bold) {
    changeFont(window, [=](wxFont& font) {
        font.SetPointSize(pointSize);
        if (bold) {
            font.SetWeight(wxFONTWEIGHT_BOLD);
        }
    });
}

void setFontBold(wxWindow* window, bool bold) {
    changeFont(window, [=](wxFont& font) {
        font.SetWeight(bold ? wxFONTWEIGHT_BOLD : wxFONTWEIGHT_NORMAL);
    });
}

}  // namespace wut

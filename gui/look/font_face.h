/// Fonts of a face that a system may not have: nothing changes there.
#pragma once

class wxDC;
class wxFont;
class wxMenuItem;
class wxWindow;

namespace wut {

bool setFace(wxFont& font, const wchar_t* face);
void setFace(wxWindow& window, const wchar_t* face);
void setFace(wxDC& dc, const wchar_t* face);
/// Does nothing on systems that draw the items themselves.
void setFace(wxMenuItem& item, const wchar_t* face);

/// For anything with a font of its own.
template <class Owner>
void setFaceOf(Owner& owner, const wchar_t* face) {
    auto font = owner.GetFont();
    if (setFace(font, face) && font.IsOk()) {
        owner.SetFont(font);
    }
}

}  // namespace wut

#include <wx/menuitem.h>

#include "gui/look/font_face.h"

namespace wut {

void setFace(wxMenuItem& item, const wchar_t* face) { setFaceOf(item, face); }

}  // namespace wut

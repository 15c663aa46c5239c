#include "gui/look/font_face.h"

namespace wut {

void setFace(wxMenuItem&, const wchar_t*) {}

}  // namespace wut

#include "gui/look/stored_bytes.h"

namespace wut {

std::span<const unsigned char> programResource(const wxString&) { return {}; }

}  // namespace wut

#include <wx/msw/private.h>
#include <wx/string.h>

#include "gui/look/stored_bytes.h"

namespace wut {

std::span<const unsigned char> programResource(const wxString& name) {
    // Where wxWidgets takes icons and menus from.
    const HINSTANCE program = wxGetInstance();
    const HRSRC found = ::FindResourceW(program, name.wc_str(), MAKEINTRESOURCEW(10));
    const HGLOBAL loaded = found == nullptr ? nullptr : ::LoadResource(program, found);
    if (loaded == nullptr) {
        return {};
    }
    return {static_cast<const unsigned char*>(::LockResource(loaded)),
            ::SizeofResource(program, found)};
}

}  // namespace wut

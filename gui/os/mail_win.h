/// Mail through any library that has the system's mail interface.
#pragma once

#include <platen/gui_os.h>

namespace wut {

/// `sendByMail` through the library called `library`.
EMailStatus sendByMail(const ut::FileName& file, HWND parent, const wchar_t* library);

}  // namespace wut

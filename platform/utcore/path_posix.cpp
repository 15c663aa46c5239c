#include <platen/utcore.h>
#include "platform/utcore/path.h"

namespace ut {

bool isPathSeparator(wchar_t character) { return character == L'/'; }

wchar_t preferredSeparator() { return L'/'; }

std::wstring correctSlashes(std::wstring_view path) {
    // A backslash is a character like any other in a file's name.
    return std::wstring(path);
}

}  // namespace ut

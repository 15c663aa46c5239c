#include <algorithm>

#include <platen/utcore.h>
#include "platform/utcore/path.h"

namespace ut {

bool isPathSeparator(wchar_t character) {
    return character == L'\\' || character == L'/' || character == L':';
}

wchar_t preferredSeparator() { return L'\\'; }

std::wstring correctSlashes(std::wstring_view path) {
    std::wstring corrected(path);
    std::replace(corrected.begin(), corrected.end(), L'/', L'\\');
    return corrected;
}

}  // namespace ut

#include "platform/utcore/file_name.h"

#include <windows.h>

namespace ut {

std::wstring normalPath(const std::wstring& fullPath) {
    // The system makes full paths normal.
    return fullPath;
}

bool isSamePath(std::wstring_view left, std::wstring_view right) {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace ut

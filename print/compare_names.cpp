#include "print/compare_names.h"

#include <wx/msw/wrapwin.h>

namespace wut {

int compareNames(const wchar_t* left, const wchar_t* right) {
    return CompareStringW(LOCALE_NEUTRAL, NORM_IGNORECASE, left, -1, right, -1) - CSTR_EQUAL;
}

}  // namespace wut

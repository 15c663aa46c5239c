#include <algorithm>

#include <platen/utcore.h>
#include "platform/utcore/case_table.h"

namespace ut {

bool isSpace(wchar_t character) {
    const auto code = static_cast<char32_t>(character);
    if (code < 0x80) {
        return code == ' ' || (code >= 0x09 && code <= 0x0D);
    }
    switch (code) {
        case 0x0085:
        case 0x00A0:
        case 0x1680:
        case 0x2028:
        case 0x2029:
        case 0x202F:
        case 0x205F:
        case 0x3000:
            return true;
        default:
            return code >= 0x2000 && code <= 0x200A;
    }
}

wchar_t toLowerBeyondAscii(wchar_t character) {
    const auto code = static_cast<char32_t>(character);
    const auto range =
        std::lower_bound(caseRanges.begin(), caseRanges.end(), code,
                         [](const CaseRange& entry, char32_t value) { return entry.last < value; });
    if (range == caseRanges.end() || code < range->first ||
        (code - range->first) % range->step != 0) {
        return character;
    }
    return static_cast<wchar_t>(static_cast<std::int32_t>(code) + range->delta);
}

bool equalNoCase(std::wstring_view left, std::wstring_view right) {
    // A simple mapping stays within its plane, so equal texts have equal lengths.
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(),
                      [](wchar_t a, wchar_t b) { return a == b || toLower(a) == toLower(b); });
}

}  // namespace ut

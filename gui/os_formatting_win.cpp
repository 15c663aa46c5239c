#include "gui/os_formatting.h"

#include <cstdint>
#include <cstdlib>

namespace wut {

namespace {

FormattingHook current = nullptr;
_invalid_parameter_handler before = nullptr;

void onInvalidParameter(const wchar_t* expression, const wchar_t*, const wchar_t*, unsigned,
                        std::uintptr_t) {
    // Only debug versions of the library tell the expression.
    current(expression != nullptr ? expression : L"the C library refused an argument");
}

}  // namespace

void hookFormatting(FormattingHook hook) {
    if (hook != nullptr) {
        current = hook;
        before = _set_invalid_parameter_handler(onInvalidParameter);
    } else {
        _set_invalid_parameter_handler(before);
    }
}

}  // namespace wut

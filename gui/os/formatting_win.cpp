#include "gui/os/formatting.h"

#include <windows.h>

#include <cstdint>

namespace wut {

namespace {

using InvalidParameterHandler = void(__cdecl*)(const wchar_t* expression, const wchar_t* function,
                                               const wchar_t* file, unsigned line,
                                               std::uintptr_t reserved);
using SetHandler = InvalidParameterHandler __cdecl(InvalidParameterHandler);

FormattingHook current = nullptr;
InvalidParameterHandler before = nullptr;
/// Null when there was no library to hook.
SetHandler* hooked = nullptr;

void __cdecl onInvalidParameter(const wchar_t* expression, const wchar_t*, const wchar_t*, unsigned,
                                std::uintptr_t) {
    // Only debug versions of the library tell the expression.
    current(expression != nullptr ? expression : L"the C library refused an argument");
}

/// Of the universal C library, which most hosts use; Platen itself may use another one, such as
/// msvcrt.dll, which has no handler and returns errors.
SetHandler* findSetHandler() {
    const HMODULE library = GetModuleHandleW(L"ucrtbase.dll");
    return library == nullptr ? nullptr
                              : reinterpret_cast<SetHandler*>(reinterpret_cast<void*>(
                                    GetProcAddress(library, "_set_invalid_parameter_handler")));
}

}  // namespace

void hookFormatting(FormattingHook hook) {
    if (hook != nullptr) {
        current = hook;
        hooked = findSetHandler();
        before = hooked != nullptr ? hooked(onInvalidParameter) : nullptr;
    } else if (hooked != nullptr) {
        hooked(before);
    }
}

}  // namespace wut

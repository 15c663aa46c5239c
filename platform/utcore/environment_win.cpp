#include "platform/utcore/environment.h"

#include <windows.h>

namespace ut {

std::wstring environmentVariable(const std::string& name) {
    const std::wstring wideName(name.begin(), name.end());
    std::wstring value(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetEnvironmentVariableW(wideName.c_str(), value.data(),
                                                     static_cast<DWORD>(value.size()));
        const bool fits = length < value.size();
        value.resize(length);
        if (fits) {
            return value;
        }
    }
}

}  // namespace ut

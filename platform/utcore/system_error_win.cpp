#include <windows.h>

#include <platen/utcore.h>
#include <platen/utcore_host.h>

namespace ut {

std::string SystemError::message() const {
    if (code == 0) {
        return {};
    }
    wchar_t text[512];
    DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, code, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && isSpace(text[length - 1])) {
        --length;
    }
    return std::string(action) + ": " +
           (length > 0 ? encodeUtf8(std::wstring_view(text, length))
                       : "error " + std::to_string(code));
}

unsigned long sysErrorCode() { return GetLastError(); }

}  // namespace ut

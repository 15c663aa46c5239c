#include "tools/platen/files/browser.h"

#include <windows.h>

#include <shellapi.h>

#include <filesystem>
#include <system_error>

namespace cli::files {

std::wstring folderOfProgram() {
    constexpr DWORD longest = 32768;
    std::wstring name(longest, L'\0');
    name.resize(::GetModuleFileNameW(nullptr, name.data(), longest));
    return std::filesystem::path(name).parent_path().wstring();
}

std::wstring newTemporaryFolder() {
    // The folder for temporary files is the user's own here.
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    if (error) {
        return {};
    }
    constexpr int attempts = 1000;
    const DWORD first = ::GetTickCount();
    for (DWORD number = first; number != first + attempts; ++number) {
        const std::filesystem::path folder = parent / (L"platen-" + std::to_wstring(number));
        if (std::filesystem::create_directory(folder, error)) {
            return folder.wstring();
        }
    }
    return {};
}

bool openInBrowser(const std::wstring& file) {
    // By its convention, more than 32 means that it was opened.
    constexpr INT_PTR opened = 32;
    return reinterpret_cast<INT_PTR>(::ShellExecuteW(nullptr, L"open", file.c_str(), nullptr,
                                                     nullptr, SW_SHOWNORMAL)) > opened;
}

}  // namespace cli::files

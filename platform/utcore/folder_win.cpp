#include "platform/utcore/folder.h"

#include <windows.h>

#include "platform/utcore/native_path.h"

namespace ut {
namespace {

// File times count tenths of microseconds from 1601.
constexpr std::int64_t stepsInSecond = 10'000'000;
constexpr std::int64_t secondsTo1970 = 11'644'473'600;

bool isNothing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

/// Other reparse points are the system's own way to keep a file, such as one in a cloud.
bool leadsElsewhere(const WIN32_FIND_DATAW& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
            found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

}  // namespace

Standing standingAt(const std::wstring& path) {
    const std::wstring native = nativePath(path);
    const DWORD attributes = GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return isNothing(GetLastError()) ? Standing::Nothing : Standing::Other;
    }
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        WIN32_FIND_DATAW found{};
        const HANDLE search = FindFirstFileW(native.c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) {
            return Standing::Other;
        }
        FindClose(search);
        if (leadsElsewhere(found)) {
            return Standing::Link;
        }
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Standing::Folder
           : (attributes & FILE_ATTRIBUTE_DEVICE) != 0  ? Standing::Other
                                                        : Standing::File;
}

SystemError makeFolder(const std::wstring& path) {
    const bool made = CreateDirectoryW(nativePath(path).c_str(), nullptr) != FALSE;
    return {made ? 0 : GetLastError(), "make the folder"};
}

std::optional<std::int64_t> timeOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(nativePath(path).c_str(), GetFileExInfoStandard, &data) == FALSE) {
        return std::nullopt;
    }
    ULARGE_INTEGER time{};
    time.LowPart = data.ftLastWriteTime.dwLowDateTime;
    time.HighPart = data.ftLastWriteTime.dwHighDateTime;
    return static_cast<std::int64_t>(time.QuadPart) / stepsInSecond - secondsTo1970;
}

void setTime(const std::wstring& path, std::int64_t seconds) {
    const HANDLE file = CreateFileW(nativePath(path).c_str(), FILE_WRITE_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return;
    }
    ULARGE_INTEGER time{};
    time.QuadPart = static_cast<ULONGLONG>((seconds + secondsTo1970) * stepsInSecond);
    const FILETIME written{time.LowPart, time.HighPart};
    SetFileTime(file, nullptr, nullptr, &written);
    CloseHandle(file);
}

}  // namespace ut

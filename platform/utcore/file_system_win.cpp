#include <windows.h>

#include <algorithm>
#include <vector>

#include "platform/utcore/file_system.h"
#include "platform/utcore/native_path.h"
#include "platform/utcore/path.h"

namespace ut {

namespace {

constexpr DWORD longestStep = 1u << 30;
constexpr DWORD anyShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

SystemError lastError(const char* action) { return {GetLastError(), action}; }

HANDLE handle(FileSystem::File file) { return reinterpret_cast<HANDLE>(file); }

/// Calls of the form "fill this buffer or tell the length needed", until the text fits.
template <typename Call>
std::wstring grown(Call call) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
        const bool fits = length < text.size();
        text.resize(length);
        if (fits) {
            return text;
        }
    }
}

/// The absolute path, which turns a reserved name such as "NUL" into a device's path. Empty on
/// failure.
std::wstring absolute(const std::wstring& path) {
    return grown([&](wchar_t* text, DWORD room) {
        return GetFullPathNameW(path.c_str(), room, text, nullptr);
    });
}

bool isDevicePath(std::wstring_view path) { return path.starts_with(L"\\\\.\\"); }

/// `path` as the system takes it at any length.
std::wstring native(const std::wstring& path) {
    // A new file's name must leave room for a short name of 12 characters.
    constexpr std::size_t longestPlain = MAX_PATH - 12;
    std::wstring full = absolute(path);
    if (full.size() < longestPlain || isDevicePath(full) || full.starts_with(L"\\\\?\\")) {
        return full;
    }
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

/// The file behind a reparse point, itself when it is no link. A link that leads nowhere has to be
/// opened for creation to tell its target: that file goes again when it is closed.
SystemError followLinks(std::wstring& path) {
    HANDLE file =
        CreateFileW(native(path).c_str(), 0, anyShare, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND) {
        file = CreateFileW(native(path).c_str(), DELETE, anyShare, nullptr, CREATE_NEW,
                           FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    }
    if (file == INVALID_HANDLE_VALUE) {
        return lastError("open");
    }
    std::wstring target = grown([&](wchar_t* text, DWORD room) {
        return GetFinalPathNameByHandleW(file, text, room, FILE_NAME_NORMALIZED);
    });
    const SystemError error = target.empty() ? lastError("open") : SystemError{};
    CloseHandle(file);
    if (!error) {
        path = std::move(target);
    }
    return error;
}

/// The attributes behind a path; INVALID_FILE_ATTRIBUTES when there is nothing.
DWORD attributesOf(std::wstring_view path) {
    // The system would take the path up to its null character.
    return path.empty() || path.find(L'\0') != std::wstring_view::npos
               ? INVALID_FILE_ATTRIBUTES
               : GetFileAttributesW(native(std::wstring(path)).c_str());
}

class WindowsFiles : public FileSystem {
public:
    SystemError openForReading(const std::wstring& path, File& file, std::uint64_t& size) override {
        // Others may go on writing the file: what was there when it is read counts.
        const SystemError error = open(path, GENERIC_READ, anyShare, OPEN_EXISTING, file);
        LARGE_INTEGER length{};
        if (!error && GetFileSizeEx(handle(file), &length) != FALSE && length.QuadPart > 0) {
            size = static_cast<std::uint64_t>(length.QuadPart);
        }
        return error;
    }

    SystemError read(File file, char* bytes, std::size_t room, std::size_t& count) override {
        DWORD result = 0;
        if (ReadFile(handle(file), bytes,
                     static_cast<DWORD>(std::min<std::size_t>(room, longestStep)), &result,
                     nullptr) == FALSE &&
            // The way a pipe says that it ends.
            GetLastError() != ERROR_BROKEN_PIPE) {
            return lastError("read");
        }
        count = result;
        return {};
    }

    SystemError tooLarge() const override { return {ERROR_FILE_TOO_LARGE, "read"}; }

    SystemError findDestination(const std::wstring& path, Destination& destination) override {
        if (path.find(L'\0') != std::wstring::npos) {
            return {ERROR_INVALID_NAME, "open"};
        }
        destination.path = absolute(path);
        if (destination.path.empty()) {
            return lastError("open");
        }
        destination.isDevice = isDevicePath(destination.path);
        if (destination.isDevice) {
            return {};
        }
        DWORD attributes = GetFileAttributesW(native(destination.path).c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            // A missing folder shows when the temporary file is created.
            return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND
                       ? SystemError{}
                       : lastError("open");
        }
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
            (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            if (const SystemError error = followLinks(destination.path)) {
                return error;
            }
            attributes = GetFileAttributesW(native(destination.path).c_str());
        }
        destination.exists = attributes != INVALID_FILE_ATTRIBUTES;
        constexpr DWORD refused = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
        return destination.exists && (attributes & refused) != 0
                   ? SystemError{ERROR_ACCESS_DENIED, "open"}
                   : SystemError{};
    }

    SystemError create(const std::wstring& path, bool /*replaces*/, File& file,
                       File& held) override {
        // It inherits its access list from the folder, as the other had. WRITE_DAC is for the
        // permissions that it gets later.
        if (const SystemError error =
                open(path, GENERIC_WRITE | WRITE_DAC, FILE_SHARE_READ, CREATE_NEW, file)) {
            return error.code == ERROR_FILE_EXISTS || error.code == taken().code
                       ? taken()
                       : SystemError{error.code, "create"};
        }
        // It lets the file be renamed, but not be opened by who wants it for himself.
        if (const SystemError error = open(path, GENERIC_READ, anyShare, OPEN_EXISTING, held)) {
            CloseHandle(handle(file));
            DeleteFileW(native(path).c_str());
            return {error.code, "create"};
        }
        return {};
    }

    SystemError taken() const override { return {ERROR_SHARING_VIOLATION, "create"}; }

    Left removeAbandoned(const std::wstring& path) override {
        const HANDLE file =
            CreateFileW(native(path).c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                        FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return GetLastError() == ERROR_FILE_NOT_FOUND ? Left::Gone
                   : GetLastError() == taken().code       ? Left::InUse
                                                          : Left::Unknown;
        }
        CloseHandle(file);
        return Left::Gone;
    }

    void release(File held) override { CloseHandle(handle(held)); }

    void discard(const std::wstring& path, File held) override {
        CloseHandle(handle(held));
        // Somebody else may have removed it and made his own, which is left alone.
        static_cast<void>(removeAbandoned(path));
    }

    void pause() override { Sleep(10); }

    SystemError openDevice(const std::wstring& path, File& file) override {
        return open(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, file);
    }

    SystemError write(File file, std::string_view bytes, std::size_t& count) override {
        DWORD result = 0;
        if (WriteFile(handle(file), bytes.data(),
                      static_cast<DWORD>(std::min<std::size_t>(bytes.size(), longestStep)), &result,
                      nullptr) == FALSE) {
            return lastError("write");
        }
        count = result;
        return result == 0 ? SystemError{ERROR_WRITE_FAULT, "write"} : SystemError{};
    }

    SystemError copyPermissions(const std::wstring& path, File file) override {
        const std::wstring from = native(path);
        DWORD size = 0;
        GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
        std::vector<unsigned char> descriptor(size);
        // A file system without access lists has none to keep.
        if (size > 0 &&
            GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size,
                             &size) != FALSE &&
            SetKernelObjectSecurity(handle(file), DACL_SECURITY_INFORMATION, descriptor.data()) ==
                FALSE) {
            return lastError("set permissions");
        }
        FILE_BASIC_INFO basic{};
        basic.FileAttributes =
            GetFileAttributesW(from.c_str()) &
            (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED);
        basic.FileAttributes |= FILE_ATTRIBUTE_ARCHIVE;
        return SetFileInformationByHandle(handle(file), FileBasicInfo, &basic, sizeof(basic)) !=
                       FALSE
                   ? SystemError{}
                   : lastError("set permissions");
    }

    SystemError flush(File file) override {
        return FlushFileBuffers(handle(file)) != FALSE ? SystemError{} : lastError("flush");
    }

    SystemError close(File file) override {
        return CloseHandle(handle(file)) != FALSE ? SystemError{} : lastError("close");
    }

    SystemError rename(const std::wstring& from, const std::wstring& to) override {
        // Whoever reads a file keeps it from being replaced for that moment, even if he shares it.
        // What never can be replaced is refused at once.
        const DWORD attributes = GetFileAttributesW(native(to).c_str());
        const bool isReplaceable =
            attributes == INVALID_FILE_ATTRIBUTES ||
            (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == 0;
        for (int moments = 100;; --moments) {
            if (MoveFileExW(native(from).c_str(), native(to).c_str(),
                            MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE) {
                return {};
            }
            const SystemError error = lastError("rename");
            if ((error.code != ERROR_ACCESS_DENIED && error.code != ERROR_SHARING_VIOLATION) ||
                !isReplaceable || moments == 0) {
                return error;
            }
            pause();
        }
    }

    void remove(const std::wstring& path) override { DeleteFileW(native(path).c_str()); }

    // MOVEFILE_WRITE_THROUGH has done it.
    void flushFolder(const std::wstring&) override {}

private:
    static SystemError open(const std::wstring& path, DWORD access, DWORD share, DWORD disposition,
                            File& file) {
        // The system would take the path up to there.
        if (path.find(L'\0') != std::wstring::npos) {
            return {ERROR_INVALID_NAME, "open"};
        }
        const HANDLE result = CreateFileW(native(path).c_str(), access, share, nullptr, disposition,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        if (result == INVALID_HANDLE_VALUE) {
            return lastError("open");
        }
        file = reinterpret_cast<File>(result);
        return {};
    }
};

}  // namespace

std::wstring nativePath(const std::wstring& path) { return native(path); }

FileSystem& systemFiles() {
    static WindowsFiles files;
    return files;
}

bool fileExists(std::wstring_view path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool folderExists(std::wstring_view path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::wstring fullPath(std::wstring_view path) {
    std::wstring full = absolute(std::wstring(path));
    return full.empty() ? std::wstring(path) : full;
}

}  // namespace ut

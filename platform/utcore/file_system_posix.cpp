#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <optional>

#include "platform/utcore/file_hold.h"
#include "platform/utcore/file_permissions.h"
#include "platform/utcore/file_system.h"
#include "platform/utcore/path.h"

namespace ut {

namespace {

SystemError lastError(const char* action) { return {static_cast<std::uint32_t>(errno), action}; }

/// Repeats a call that a signal interrupted.
template <typename Call>
auto repeated(Call call) {
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR) {
            return result;
        }
    }
}

int descriptor(FileSystem::File file) { return static_cast<int>(file); }

/// The folder of `path` as a path of its own.
std::wstring openableFolderOf(const std::wstring& path) {
    const std::wstring folder = path.substr(0, lastComponent(path));
    return folder.empty() ? L"." : folder;
}

/// The target of the symbolic link at `path`; false when it is none.
bool readLink(const std::string& path, std::string& target) {
    target.resize(256);
    for (;;) {
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            return false;
        }
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            return true;
        }
        target.resize(target.size() * 2);
    }
}

/// Type and permissions behind a path; empty when there is nothing.
std::optional<mode_t> modeOf(std::wstring_view path) {
    struct stat status {};
    // The system would take the path up to its null character.
    if (path.find(L'\0') != std::wstring_view::npos ||
        ::stat(encodePath(path).c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status.st_mode;
}

class PosixFiles : public FileSystem {
public:
    SystemError openForReading(const std::wstring& path, File& file, std::uint64_t& size) override {
        if (const SystemError error = open(path, O_RDONLY, file)) {
            return error;
        }
        struct stat status {};
        if (::fstat(descriptor(file), &status) != 0 || S_ISDIR(status.st_mode)) {
            // A folder opens, but has nothing to read.
            const SystemError error =
                S_ISDIR(status.st_mode) ? SystemError{EISDIR, "open"} : lastError("open");
            ::close(descriptor(file));
            return error;
        }
        size = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
        return {};
    }

    SystemError read(File file, char* bytes, std::size_t room, std::size_t& count) override {
        const ssize_t result = repeated([&] { return ::read(descriptor(file), bytes, room); });
        if (result < 0) {
            return lastError("read");
        }
        count = static_cast<std::size_t>(result);
        return {};
    }

    SystemError tooLarge() const override { return {EFBIG, "read"}; }

    SystemError findDestination(const std::wstring& path, Destination& destination) override {
        if (path.find(L'\0') != std::wstring::npos) {
            return {EINVAL, "open"};
        }
        std::string native = encodePath(path);
        struct stat status {};
        destination.exists = ::stat(native.c_str(), &status) == 0;
        if (!destination.exists && errno != ENOENT) {
            return lastError("open");
        }
        destination.isDevice = destination.exists && !S_ISREG(status.st_mode);
        if (destination.isDevice) {
            // The path stays as it is: a link such as /dev/stdout leads to no path at all.
            destination.path = path;
            return S_ISDIR(status.st_mode) ? SystemError{EISDIR, "open"} : SystemError{};
        }
        // Renaming asks for no right on the file that it does away with.
        if (destination.exists && ::faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) != 0) {
            return lastError("open");
        }
        std::string target;
        for (int links = 0; readLink(native, target); ++links) {
            if (links == 40) {
                return {ELOOP, "open"};
            }
            if (!target.starts_with('/')) {
                target.insert(0, native, 0, native.rfind('/') + 1);
            }
            native = target;
        }
        destination.path = decodePath(native);
        return {};
    }

    SystemError create(const std::wstring& path, bool replaces, File& file, File& held) override {
        const mode_t mode = replaces ? 0600 : 0666;
        if (const SystemError error = open(path, O_WRONLY | O_CREAT | O_EXCL, file, mode)) {
            return error.code == EEXIST ? taken() : SystemError{error.code, "create"};
        }
        int holder = -1;
        if (const int code = holdFile(descriptor(file), holder)) {
            ::close(descriptor(file));
            if (code == EBUSY) {
                return taken();
            }
            ::unlink(encodePath(path).c_str());
            return {static_cast<std::uint32_t>(code), "create"};
        }
        held = holder;
        return {};
    }

    SystemError taken() const override { return {EBUSY, "create"}; }

    Left removeAbandoned(const std::wstring& path) override {
        return removeUnheld(encodePath(path).c_str());
    }

    void release(File held) override { ::close(descriptor(held)); }

    void discard(const std::wstring& path, File held) override {
        // Before it is let go: somebody else could take the name.
        ::unlink(encodePath(path).c_str());
        ::close(descriptor(held));
    }

    void pause() override {
        const timespec moment{0, 10'000'000};
        ::nanosleep(&moment, nullptr);
    }

    SystemError openDevice(const std::wstring& path, File& file) override {
        return open(path, O_WRONLY, file);
    }

    SystemError write(File file, std::string_view bytes, std::size_t& count) override {
        const std::size_t most =
            std::min<std::size_t>(bytes.size(), std::numeric_limits<std::int32_t>::max() / 2);
        const ssize_t result =
            repeated([&] { return ::write(descriptor(file), bytes.data(), most); });
        if (result < 0) {
            return lastError("write");
        }
        count = static_cast<std::size_t>(result);
        return result == 0 ? SystemError{EIO, "write"} : SystemError{};
    }

    SystemError copyPermissions(const std::wstring& path, File file) override {
        const int code = copyFilePermissions(encodePath(path).c_str(), descriptor(file));
        return {static_cast<std::uint32_t>(code), "set permissions"};
    }

    SystemError flush(File file) override {
        const int result = repeated([&] { return ::fsync(descriptor(file)); });
        return result == 0 ? SystemError{} : lastError("flush");
    }

    SystemError close(File file) override {
        // An interrupted close has closed all the same.
        return ::close(descriptor(file)) == 0 || errno == EINTR ? SystemError{}
                                                                : lastError("close");
    }

    SystemError rename(const std::wstring& from, const std::wstring& to) override {
        return ::rename(encodePath(from).c_str(), encodePath(to).c_str()) == 0
                   ? SystemError{}
                   : lastError("rename");
    }

    void remove(const std::wstring& path) override { ::unlink(encodePath(path).c_str()); }

    void flushFolder(const std::wstring& path) override {
        File folder{};
        if (!open(openableFolderOf(path), O_RDONLY | O_DIRECTORY, folder)) {
            ::fsync(descriptor(folder));
            ::close(descriptor(folder));
        }
    }

private:
    static SystemError open(const std::wstring& path, int flags, File& file, mode_t mode = 0) {
        // The system would take the path up to there.
        if (path.find(L'\0') != std::wstring::npos) {
            return {EINVAL, "open"};
        }
        const std::string native = encodePath(path);
        const int result =
            repeated([&] { return ::open(native.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode); });
        if (result < 0) {
            return lastError("open");
        }
        file = result;
        return {};
    }
};

}  // namespace

FileSystem& systemFiles() {
    static PosixFiles files;
    return files;
}

bool fileExists(std::wstring_view path) {
    const std::optional<mode_t> mode = modeOf(path);
    return mode && !S_ISDIR(*mode);
}

bool folderExists(std::wstring_view path) {
    const std::optional<mode_t> mode = modeOf(path);
    return mode && S_ISDIR(*mode);
}

std::wstring fullPath(std::wstring_view path) {
    std::string folder(256, '\0');
    if (path.starts_with(L'/')) {
        return std::wstring(path);
    }
    while (::getcwd(folder.data(), folder.size()) == nullptr) {
        if (errno != ERANGE) {
            return std::wstring(path);
        }
        folder.resize(folder.size() * 2);
    }
    folder.resize(folder.find('\0'));
    return joinPath(decodePath(folder), path);
}

}  // namespace ut

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/utcore/folder.h"

namespace ut {
namespace {

/// The system would take a path up to its null character.
bool hasNull(const std::wstring& path) { return path.find(L'\0') != std::wstring::npos; }

}  // namespace

Standing standingAt(const std::wstring& path) {
    struct stat status {};
    if (hasNull(path) || ::lstat(encodePath(path).c_str(), &status) != 0) {
        return !hasNull(path) && errno == ENOENT ? Standing::Nothing : Standing::Other;
    }
    return S_ISREG(status.st_mode)   ? Standing::File
           : S_ISDIR(status.st_mode) ? Standing::Folder
           : S_ISLNK(status.st_mode) ? Standing::Link
                                     : Standing::Other;
}

SystemError makeFolder(const std::wstring& path) {
    const int code = hasNull(path)                                  ? EINVAL
                     : ::mkdir(encodePath(path).c_str(), 0777) != 0 ? errno
                                                                    : 0;
    return {static_cast<std::uint32_t>(code), "make the folder"};
}

std::optional<std::int64_t> timeOf(const std::wstring& path) {
    struct stat status {};
    if (hasNull(path) || ::stat(encodePath(path).c_str(), &status) != 0) {
        return std::nullopt;
    }
    return std::int64_t{status.st_mtime};
}

void setTime(const std::wstring& path, std::int64_t seconds) {
    timespec times[2]{};
    times[0].tv_sec = times[1].tv_sec = static_cast<time_t>(seconds);
    ::utimensat(AT_FDCWD, encodePath(path).c_str(), times, AT_SYMLINK_NOFOLLOW);
}

}  // namespace ut

/// What stands in folders, and the times of files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <platen/utcore.h>

namespace ut {

/// What stands at a path. Links on the way to it are followed, itself is looked at as it is.
enum class Standing {
    Nothing,
    File,
    Folder,
    /// A symbolic link or, on Windows, a junction.
    Link,
    /// A device, a pipe, or what may not be looked at.
    Other,
};

Standing standingAt(const std::wstring& path);

/// Makes one folder. Fails when something stands there.
SystemError makeFolder(const std::wstring& path);

/// When a file was last written, in seconds since 1970 in UTC; empty when there is none.
std::optional<std::int64_t> timeOf(const std::wstring& path);
/// As far as the system lets us.
void setTime(const std::wstring& path, std::int64_t seconds);

}  // namespace ut

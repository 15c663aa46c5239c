#include "platform/utcore/file_name.h"
#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "platform/utcore/path.h"

namespace ut {

namespace {

/// Without separators at the end, but for that of a root, which the path needs.
std::wstring_view bare(std::wstring_view path) {
    return lastComponent(path) == path.size() ? folderOf(path) : path;
}

}  // namespace

std::wstring FileName::getFullPath() const {
    return path_.empty() ? std::wstring() : normalPath(fullPath(path_));
}

std::wstring FileName::getFullName() const { return path_.substr(lastComponent(path_)); }

bool FileName::exists() const { return fileExists(path_); }

bool FileName::operator==(const FileName& other) const {
    const std::wstring own = getFullPath();
    const std::wstring others = other.getFullPath();
    return isSamePath(bare(own), bare(others));
}

}  // namespace ut

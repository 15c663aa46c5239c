#include "platform/utcore/file_name.h"

#include <filesystem>

#include <platen/utcore.h>

namespace ut {

std::wstring normalPath(const std::wstring& fullPath) {
    // By the system's bytes, since a name need not be valid text.
    return decodePath(std::filesystem::path(encodePath(fullPath)).lexically_normal().native());
}

bool isSamePath(std::wstring_view left, std::wstring_view right) { return left == right; }

}  // namespace ut

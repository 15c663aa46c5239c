/// Paths as Windows' own functions take them.
#pragma once

#include <string>

namespace ut {

/// `path` from the root, as the system takes it at any length.
std::wstring nativePath(const std::wstring& path);

}  // namespace ut

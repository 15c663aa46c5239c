/// What systems see differently in paths.
#pragma once

#include <string>
#include <string_view>

namespace ut {

/// A full path without "." and "..".
std::wstring normalPath(const std::wstring& fullPath);

/// True when two full paths are the same to the system.
bool isSamePath(std::wstring_view left, std::wstring_view right);

}  // namespace ut

/// Text files by wide paths.
#pragma once

#include <cstdio>
#include <string>

namespace wut {

/// Opens a file for reading text; null when that fails. The caller owns it.
std::FILE* openTextFile(const std::wstring& path);

}  // namespace wut

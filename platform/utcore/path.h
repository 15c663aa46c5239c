/// Paths as each system writes them.
#pragma once

#include <cstddef>
#include <string_view>

namespace ut {

/// True when `character` ends a folder's name in a path.
bool isPathSeparator(wchar_t character);

/// What is put between a folder and a name.
wchar_t preferredSeparator();

/// Where the last component of `path` begins: behind its last separator.
std::size_t lastComponent(std::wstring_view path);

}  // namespace ut

/// Digests of files.
#pragma once

#include <string>
#include <string_view>

namespace platen::house {

/// SHA-256 as 64 small hexadecimal digits.
std::string sha256(std::string_view bytes);

}  // namespace platen::house

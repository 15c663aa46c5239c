/// Driver-private bytes as documents store them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace wut {

/// Two upper-case hexadecimal digits for each byte, the high ones first.
std::wstring hexText(std::span<const std::byte> bytes);
/// The bytes of an even number of digits of either case; what is no digit counts as 0. An odd one
/// at the end is left out.
std::vector<std::byte> hexBytes(std::wstring_view text);

}  // namespace wut

/// Texts that come from the system: comments, names of drivers and papers.
#pragma once

#include <string>
#include <string_view>

namespace plot_config {

/// `text` as documents have it, whose values are lines: each line break ("\r\n", "\n" or "\r") and
/// any other control character becomes a space.
std::wstring oneLine(std::wstring_view text);

}  // namespace plot_config

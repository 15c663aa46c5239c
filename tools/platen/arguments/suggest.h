/// What a mistyped name may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli::arguments {

/// The few of `names` that `wanted` is part of or, when there are none, that differ from it in the
/// fewest letters. Case does not matter. Empty when nothing is near.
std::vector<std::wstring> nearNames(std::wstring_view wanted,
                                    const std::vector<std::wstring>& names);

/// For the end of a message: "; did you mean ...?", or all the names when nothing is near and they
/// are few, or `otherwise`.
std::string suggestion(std::wstring_view wanted, const std::vector<std::wstring>& names,
                       std::string_view otherwise = {});

}  // namespace cli::arguments

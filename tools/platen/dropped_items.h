/// What a file loses when another document is written over it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <platen/pia.h>

namespace platen {

/// At most this many paths are listed.
inline constexpr std::size_t mostDroppedItems = 1000;

/// The paths of the items of `before` that `after` has not, by name and type. A block that is not
/// there is listed without its content. The properties of the top block "custom" are compared by
/// their names and types, whatever their numbers, and listed with their names.
std::vector<std::wstring> droppedItems(const PiaBlock& before, const PiaBlock& after);

}  // namespace platen

/// Bringing a table into the tree of its file.
#pragma once

#include <cstddef>
#include <limits>
#include <span>

#include <platen/pia.h>
#include <platen/plotstyle.h>

namespace platen {

/// The place of a style that the file does not have.
inline constexpr std::size_t noOrigin = std::numeric_limits<std::size_t>::max();

enum class TreeMerge { Failed, Same, Changed };

/// Puts the items of `before`, the file of the table, into `after` with what the table holds now.
/// Style i of the table was style `origins[i]` of the file.
TreeMerge mergeTable(const PiaBlock& before, const CPlotStyleTable& table,
                     std::span<const std::size_t> origins, PiaBlock& after);

}  // namespace platen

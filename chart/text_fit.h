/// Text in a room of a given width. Nobody knows the reader's font: widths are those of a wide one,
/// so that others leave a little room.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platen::chart {

/// In the unit of `size`, which is the font's.
double textWidth(std::string_view text, double size, bool bold = false);

/// The text, or its beginning with "…" behind it.
std::string fitted(std::string_view text, double width, double size, bool bold = false);

/// The text in at most `most` lines, broken at blanks and behind commas and the like where that
/// is possible. What does not fit ends with "…". Not empty.
std::vector<std::string> wrapped(std::string_view text, double width, double size, std::size_t most,
                                 bool bold = false);

/// The widest of them.
double widest(const std::vector<std::string>& lines, double size, bool bold = false);

}  // namespace platen::chart

/// What the columns of a table in CSV are called, and its rows that are no styles.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platen::table_columns {

inline constexpr std::string_view number = "number";
inline constexpr std::string_view name = "name";
inline constexpr std::string_view localizedName = "localized_name";
inline constexpr std::string_view colors = "colors";
inline constexpr std::string_view scaleFactor = "scale_factor";
inline constexpr std::string_view applyFactor = "apply_factor";
inline constexpr std::string_view displayUnits = "display_units";
// They are settings of styles, too.
inline constexpr std::string_view description = "description";
inline constexpr std::string_view lineWeight = "lineweight";

/// In the column of the numbers.
inline constexpr std::string_view tableRow = "table";
/// Followed by a number.
inline constexpr std::string_view lineWeightRow = "lineweight ";

/// All columns in their order.
std::vector<std::string_view> all();

}  // namespace platen::table_columns

/// Numbers as people type them.
#pragma once

#include <optional>
#include <string_view>

namespace cli::arguments {

/// The number that is all of `text`: a sign, digits with a decimal point, an exponent. Empty for
/// anything else, and for what is not finite.
std::optional<double> wholeNumber(std::string_view text);

}  // namespace cli::arguments

/// Numbers as decimal digits, the same on all systems.
#pragma once

#include <string>

namespace ut {

/// With exactly `digits` digits behind the point, rounded from the number's exact value; "inf" and
/// "-inf" for what has no digits.
std::string fixedDigits(double value, int digits);

/// The shortest digits that mean exactly this value, with an exponent where that is shorter.
std::string shortestDigits(double value);

}  // namespace ut

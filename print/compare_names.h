/// Names of printers and papers as Windows compares them.
#pragma once

namespace wut {

/// Below, at or above 0, ignoring case.
int compareNames(const wchar_t* left, const wchar_t* right);

}  // namespace wut

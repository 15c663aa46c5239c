/// The variables that a process gets from its caller.
#pragma once

#include <string>

namespace ut {

/// The value of an environment variable with an ASCII name; empty when it is not set.
std::wstring environmentVariable(const std::string& name);

}  // namespace ut

/// Bytes among the resources of the program.
#pragma once

#include <span>

class wxString;

namespace wut {

/// The program's resource of this name, which lives as long as the program; empty when there is
/// none.
std::span<const unsigned char> programResource(const wxString& name);

}  // namespace wut

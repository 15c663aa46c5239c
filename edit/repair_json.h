/// The part of a damaged JSON text that can be read.
#pragma once

#include <string>
#include <string_view>

#include "edit/repair_notes.h"

namespace platen {

/// The text up to the last member that is whole before its fault, with everything closed that is
/// open there; the text itself when it can be read.
std::string salvageJson(std::string_view text, const PiaReadOptions& reading, RepairNotes& notes);

}  // namespace platen

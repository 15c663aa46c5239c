/// Making body text that readers take out of damaged body text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "edit/repair_notes.h"

namespace platen {

/// Body text that a reader takes, line by line from a damaged one.
struct SalvagedBody {
    std::string text;
    /// For each line of `text`, the line that it is from.
    std::vector<std::uint32_t> sources;
    /// Lines of `text` (from 1) with items whose name an item of the block had already: they have
    /// another name now, and had this one.
    std::map<std::uint32_t, std::wstring> duplicates;

    /// The line of the damaged body that an item of the tree was read from.
    std::uint32_t sourceOf(std::uint32_t line) const {
        return line == 0 || line > sources.size() ? 0 : sources[line - 1];
    }
};

/// Goes through a damaged body. Lines that a reader takes stay as they are; where the others leave
/// a choice, the indentation that writers give each line decides. `torn`: the body was cut, so that
/// the beginning of a last line says nothing.
SalvagedBody salvageBody(std::string_view body, bool torn, const PiaLimits& limits,
                         RepairNotes& notes);

}  // namespace platen

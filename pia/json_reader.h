/// Builds a tree from a JSON body (version 3).
#pragma once

#include <string_view>

#include <platen/pia.h>

/// Reads the first JSON object of `text` (UTF-8) into the fresh `tree`: the members of its object
/// "data". False, with the reason in the report, when there is none or a member does not convert.
[[nodiscard]] bool piaReadJson(std::string_view text, const PiaLimits& limits, PiaTree& tree,
                               PiaReport& report);

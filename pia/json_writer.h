/// Writes a tree as a JSON body (version 3).
#pragma once

#include <string>

#include <platen/pia.h>

/// Replaces `text` by the JSON body, UTF-8, of the children of `data`. Its layout keeps the
/// sixteenth byte from being "2", so that every reader takes it for version 3.
///
/// JSON holds less than the tree does: what the library's own reader will not give back as it was
/// (a number spelled another way, a binary value not named "value", two items of one name) is a
/// warning. Members stand in ascending order, whatever the order of the items. False, with the
/// reason in the report, when blocks are nested deeper than readers take.
[[nodiscard]] bool piaWriteJson(const PiaBlock& data, std::string& text, PiaReport& report);

/// A tree as text: the bodies of files, and what people read.
#pragma once

#include <string>

#include <platen/platen_api.h>

class PiaBlock;
class PiaReport;

/// Appends the body text of the root block in the ANSI code page, lines cut at 511 characters as
/// every reader of the format expects. What a reader would not read back as it stands in the tree
/// is a warning. False, with the reason in the report, when a name or value holds a line break:
/// it would read as other lines.
[[nodiscard]] PLATEN_API bool piaWriteBody(const PiaBlock& root, std::string& body,
                                           PiaReport& report);

/// Replaces `text` by the JSON body (version 3), UTF-8, of the children of `data`. Its layout keeps
/// the sixteenth byte from being "2", so that every reader takes it for version 3.
///
/// JSON holds less than the tree does: what the library's own reader will not give back as it was
/// (a number spelled another way, a binary value not named "value", two items of one name) is a
/// warning. Members stand in ascending order, whatever the order of the items. False, with the
/// reason in the report, when blocks are nested deeper than readers take.
[[nodiscard]] PLATEN_API bool piaWriteJson(const PiaBlock& data, std::string& text,
                                           PiaReport& report);

/// The text of the children of `block` for people: UTF-8, nothing cut, nothing checked.
PLATEN_API std::string piaBodyText(const PiaBlock& block);

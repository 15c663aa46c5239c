/// One ending for lines of text.
#pragma once

#include <wx/string.h>

namespace wut {

/// The text with line feeds alone between its lines. Systems draw carriage returns as boxes or take
/// them for lines of their own.
inline wxString withLineFeeds(wxString text) {
    text.Replace("\r\n", "\n");
    text.Replace("\r", "\n");
    return text;
}

}  // namespace wut

/// What a printed page says, read from the PostScript that a queue got.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

/// In points, from the lower left corner of the paper as it is fed.
struct PostScriptBox {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

/// Of a document of one page.
struct PostScriptPage {
    /// "Portrait" or "Landscape"
    std::string orientation;
    /// Every size that the setup asks for: "842 1191".
    std::set<std::string> paperSizes;
    /// By the setup; nothing when it says nothing.
    std::optional<int> copies;
    int pages = 0;
    /// Around the first path that is closed.
    PostScriptBox border;
    /// Names of the characters that are shown: "S e v e n".
    std::string characters;
};

PostScriptPage readPostScriptPage(std::string_view document);

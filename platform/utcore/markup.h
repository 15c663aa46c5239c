/// Text of others in HTML, SVG and XML.
#pragma once

#include <string>
#include <string_view>

namespace ut {

/// UTF-8 text as it may stand between tags, and inside an attribute's quotes of either kind: what a
/// reader sees is the text, whatever it says. What is no UTF-8 or no character, and what turns the
/// direction of the text around it, becomes U+FFFD; a control character, line feeds and tabs among
/// them, becomes the picture of its name.
/// An attribute that holds an address or a script is no place for text of others, escaped or not.
std::string escapeMarkup(std::string_view text);
/// The same for wide text.
std::string escapeMarkup(std::wstring_view text);

/// The same characters unescaped: what a reader of the markup sees, for pictures.
std::string visibleText(std::string_view text);

}  // namespace ut

/// What the user's language and number format decide.
#pragma once

#include <optional>
#include <string>

namespace plot_style {

/// The word that the names of colour styles begin with, in the user's language.
std::wstring colorWord();

/// The number that the user typed, with the locale's decimal point; empty when there is more or
/// less in `text` than a number.
std::optional<double> parseTyped(const wchar_t* text);

}  // namespace plot_style

/// What the user's language decides.
#pragma once

#include <string>

namespace wut {

/// `text` in the user's language, as far as the registered translator knows it.
std::wstring translated(const wchar_t* text);

}  // namespace wut

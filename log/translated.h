/// What the user's language decides.
#pragma once

#include <string>

namespace plot_config {

/// `text` in the user's language, as far as the loaded catalogues know it.
std::wstring translated(const wchar_t* text);

}  // namespace plot_config

#include "plotcfg/wx_text.h"

#include <wx/string.h>
#include <wx/translation.h>

namespace plot_config {

std::wstring translated(const wchar_t* text) { return wxGetTranslation(text).ToStdWstring(); }

}  // namespace plot_config

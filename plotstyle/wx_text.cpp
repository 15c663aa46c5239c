#include "plotstyle/wx_text.h"

#include <wx/string.h>
#include <wx/translation.h>

namespace plot_style {

std::wstring colorWord() { return wxGetTranslation("Color").ToStdWstring(); }

std::optional<double> parseTyped(const wchar_t* text) {
    double number = 0.0;
    return wxString(text).ToDouble(&number) ? std::optional(number) : std::nullopt;
}

}  // namespace plot_style

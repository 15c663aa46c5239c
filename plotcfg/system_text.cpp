#include "plotcfg/system_text.h"

#include <cstddef>

namespace plot_config {

std::wstring oneLine(std::wstring_view text) {
    std::wstring line;
    line.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const wchar_t character = text[at];
        if (character == L'\n' && at > 0 && text[at - 1] == L'\r') {
            continue;
        }
        const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
        line += control ? L' ' : character;
    }
    return line;
}

}  // namespace plot_config

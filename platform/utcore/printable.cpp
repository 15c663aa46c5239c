#include <cstddef>

#include <platen/utcore.h>

namespace ut {
namespace {

void appendHex(std::string& text, unsigned char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += "\\x";
    text += digits[byte >> 4U];
    text += digits[byte & 15U];
}

}  // namespace

std::string printable(std::string_view text, bool keepLines) {
    constexpr unsigned char c1Lead = 0xC2;
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        const auto next =
            static_cast<unsigned char>(index + 1 < text.size() ? text[index + 1] : '\0');
        if (byte == c1Lead && next >= 0x80 && next < 0xA0) {
            // The second set of control characters, two bytes each in UTF-8.
            appendHex(shown, next);
            ++index;
        } else if ((byte < ' ' && !(keepLines && byte == '\n')) || byte == 0x7F) {
            appendHex(shown, byte);
        } else {
            shown += text[index];
        }
    }
    return shown;
}

}  // namespace ut

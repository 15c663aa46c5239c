#include <platen/utcore.h>
#include "platform/utcore/ascii.h"
#include "platform/utcore/utf.h"

namespace ut {

bool isAscii(std::string_view bytes) { return asciiLength(bytes) == bytes.size(); }

bool isUtf8(std::string_view bytes) {
    for (;;) {
        bytes.remove_prefix(asciiLength(bytes));
        if (bytes.empty()) {
            return true;
        }
        char32_t character = 0;
        const std::size_t length = readUtf8(bytes, character);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
}

bool decodeUtf8(std::string_view bytes, std::wstring& text) {
    const std::size_t plain = asciiLength(bytes);
    std::string_view rest = bytes.substr(plain);
    if (!isUtf8(rest)) {
        return false;
    }
    // No character has more units than bytes.
    text.resize(bytes.size());
    widenAscii(bytes.substr(0, plain), text.data());
    wchar_t* end = text.data() + plain;
    while (!rest.empty()) {
        char32_t character = 0;
        rest.remove_prefix(readUtf8(rest, character));
        end += writeWide(character, end);
    }
    text.resize(static_cast<std::size_t>(end - text.data()));
    return true;
}

std::wstring decodeUtf8Lenient(std::string_view bytes, bool escape) {
    std::wstring text;
    if (decodeUtf8(bytes, text)) {
        return text;
    }
    while (!bytes.empty()) {
        char32_t character = 0;
        std::size_t length = readUtf8(bytes, character);
        if (length == 0) {
            length = 1;
            character = static_cast<unsigned char>(bytes.front());
            character += escape ? 0xDC00 : 0;
        }
        bytes.remove_prefix(length);
        wchar_t units[2];
        text.append(units, writeWide(character, units));
    }
    return text;
}

std::string encodeUtf8(std::wstring_view text) {
    const std::size_t plain = asciiLength(text);
    std::string bytes(plain, '\0');
    narrowAscii(text.substr(0, plain), bytes.data());
    text.remove_prefix(plain);
    while (!text.empty()) {
        char32_t character = takeCharacter(text);
        if (isSurrogate(character)) {
            character = replacementCharacter;
        }
        char sequence[4];
        bytes.append(sequence, writeUtf8(character, sequence));
    }
    return bytes;
}

}  // namespace ut

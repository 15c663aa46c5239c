#include "platform/utcore/markup.h"

#include <algorithm>
#include <cstddef>

#include <platen/utcore.h>
#include "platform/utcore/utf.h"

namespace ut {
namespace {

constexpr char32_t controlPictures = 0x2400;
constexpr char32_t pictureOfDelete = 0x2421;

bool turnsDirection(char32_t character) {
    return (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

/// True for what XML forbids or discourages, besides the first control characters.
bool isNoCharacter(char32_t character) {
    constexpr char32_t lastOfPlane = 0xFFFE;
    return (character >= 0x80 && character < 0xA0) || (character & lastOfPlane) == lastOfPlane ||
           (character >= 0xFDD0 && character <= 0xFDEF);
}

char32_t shownFor(char32_t character) {
    if (character < ' ') {
        return controlPictures + character;
    }
    if (character == 0x7F) {
        return pictureOfDelete;
    }
    return isNoCharacter(character) || turnsDirection(character) ? replacementCharacter : character;
}

void append(std::string& text, char32_t character) {
    char sequence[4];
    text.append(sequence, writeUtf8(character, sequence));
}

void appendEscaped(std::string& text, char32_t character) {
    switch (character) {
        case '&':
            text += "&amp;";
            return;
        case '<':
            text += "&lt;";
            return;
        case '>':
            text += "&gt;";
            return;
        case '"':
            text += "&quot;";
            return;
        case '\'':
            text += "&#39;";
            return;
        default:
            append(text, character);
    }
}

/// Gives `take` each character as it is shown.
template <class Take>
void forEachShown(std::string_view text, const Take& take) {
    while (!text.empty()) {
        char32_t character = replacementCharacter;
        const std::size_t length = readUtf8(text, character);
        take(length == 0 ? replacementCharacter : shownFor(character));
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

}  // namespace

std::string escapeMarkup(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    forEachShown(text, [&](char32_t character) { appendEscaped(escaped, character); });
    return escaped;
}

std::string visibleText(std::string_view text) {
    std::string visible;
    visible.reserve(text.size());
    forEachShown(text, [&](char32_t character) { append(visible, character); });
    return visible;
}

std::string escapeMarkup(std::wstring_view text) { return escapeMarkup(encodeUtf8(text)); }

}  // namespace ut

/// Single characters in UTF-8, UTF-16 and wide text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ut {

inline constexpr char32_t replacementCharacter = 0xFFFD;

inline bool isSurrogate(char32_t character) { return (character & 0xFFFFF800u) == 0xD800; }
inline bool isHighSurrogate(char32_t character) { return (character & 0xFFFFFC00u) == 0xD800; }
inline bool isLowSurrogate(char32_t character) { return (character & 0xFFFFFC00u) == 0xDC00; }
inline char32_t joinSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// Reads one character from non-empty UTF-8. Returns its length, or 0 when it is malformed.
inline std::size_t readUtf8(std::string_view bytes, char32_t& character) {
    const auto at = [bytes](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
    };
    const auto isTail = [](std::uint32_t byte) { return (byte & 0xC0) == 0x80; };
    const std::uint32_t lead = at(0);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    if (lead < 0xE0) {
        if (bytes.size() < 2 || !isTail(at(1))) {
            return 0;
        }
        character = (lead & 0x1F) << 6 | (at(1) & 0x3F);
        return 2;
    }
    if (lead < 0xF0) {
        if (bytes.size() < 3 || !isTail(at(1)) || !isTail(at(2))) {
            return 0;
        }
        character = (lead & 0x0F) << 12 | (at(1) & 0x3F) << 6 | (at(2) & 0x3F);
        return character < 0x800 || isSurrogate(character) ? 0 : 3;
    }
    if (bytes.size() < 4 || !isTail(at(1)) || !isTail(at(2)) || !isTail(at(3))) {
        return 0;
    }
    character = (lead & 0x07) << 18 | (at(1) & 0x3F) << 12 | (at(2) & 0x3F) << 6 | (at(3) & 0x3F);
    return character < 0x10000 || character > 0x10FFFF ? 0 : 4;
}

/// Writes `character` as UTF-8 to `bytes`, which has room for 4. Returns the length.
inline std::size_t writeUtf8(char32_t character, char* bytes) {
    const auto tail = [character](int shift) {
        return static_cast<char>(0x80 | (character >> shift & 0x3F));
    };
    if (character < 0x80) {
        bytes[0] = static_cast<char>(character);
        return 1;
    }
    if (character < 0x800) {
        bytes[0] = static_cast<char>(0xC0 | character >> 6);
        bytes[1] = tail(0);
        return 2;
    }
    if (character < 0x10000) {
        bytes[0] = static_cast<char>(0xE0 | character >> 12);
        bytes[1] = tail(6);
        bytes[2] = tail(0);
        return 3;
    }
    bytes[0] = static_cast<char>(0xF0 | character >> 18);
    bytes[1] = tail(12);
    bytes[2] = tail(6);
    bytes[3] = tail(0);
    return 4;
}

/// Takes one character from the beginning of non-empty `text`. A surrogate pair is one character
/// on every system; a lone surrogate stays, and a number beyond Unicode becomes U+FFFD.
inline char32_t takeCharacter(std::wstring_view& text) {
    const auto first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if (isHighSurrogate(first) && !text.empty()) {
        const auto second = static_cast<char32_t>(text.front());
        if (isLowSurrogate(second)) {
            text.remove_prefix(1);
            return joinSurrogates(first, second);
        }
    }
    return first > 0x10FFFF ? replacementCharacter : first;
}

/// Number of UTF-16 units of `character`.
inline std::size_t utf16Units(char32_t character) { return character - 0x10000 < 0x100000 ? 2 : 1; }
inline char16_t highSurrogate(char32_t character) {
    return static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
}
inline char16_t lowSurrogate(char32_t character) {
    return static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

/// Writes `character` to `text`, which has room for 2. Returns the number of `wchar_t`.
inline std::size_t writeWide(char32_t character, wchar_t* text) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (character > 0xFFFF) {
            text[0] = static_cast<wchar_t>(highSurrogate(character));
            text[1] = static_cast<wchar_t>(lowSurrogate(character));
            return 2;
        }
    }
    text[0] = static_cast<wchar_t>(character);
    return 1;
}

/// Decodes UTF-8 of which every malformed byte becomes U+DC00 + byte or, without `escape`, the
/// code point of the same number.
std::wstring decodeUtf8Lenient(std::string_view bytes, bool escape);

}  // namespace ut

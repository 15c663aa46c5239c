/// ASCII runs: nearly every text is one, so all conversions take them many characters at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ut {

/// Length of the ASCII run that `bytes` begins with.
inline std::size_t asciiLength(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    for (; end - at >= 16; at += 16) {
        std::uint64_t words[2];
        std::memcpy(words, at, sizeof(words));
        if (((words[0] | words[1]) & highBits) != 0) {
            break;
        }
    }
    while (at != end && static_cast<unsigned char>(*at) < 0x80) {
        ++at;
    }
    return static_cast<std::size_t>(at - bytes.data());
}

/// Length of the ASCII run that `text` begins with.
inline std::size_t asciiLength(std::wstring_view text) {
    const wchar_t* at = text.data();
    const wchar_t* const end = at + text.size();
    for (; end - at >= 8; at += 8) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            bits |= static_cast<std::uint32_t>(at[i]);
        }
        if (bits >= 0x80) {
            break;
        }
    }
    while (at != end && static_cast<std::uint32_t>(*at) < 0x80) {
        ++at;
    }
    return static_cast<std::size_t>(at - text.data());
}

// In both copies the inner loop has a fixed count, for the compiler to turn it into vector moves.

/// Writes ASCII `bytes` to `text`, which has room for as many characters.
inline void widenAscii(std::string_view bytes, wchar_t* text) {
    std::size_t i = 0;
    for (; bytes.size() - i >= 16; i += 16) {
        for (std::size_t k = 0; k < 16; ++k) {
            text[i + k] = static_cast<wchar_t>(static_cast<unsigned char>(bytes[i + k]));
        }
    }
    for (; i < bytes.size(); ++i) {
        text[i] = static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]));
    }
}

/// Writes ASCII `text` to `bytes`, which has room for as many bytes.
inline void narrowAscii(std::wstring_view text, char* bytes) {
    std::size_t i = 0;
    for (; text.size() - i >= 16; i += 16) {
        for (std::size_t k = 0; k < 16; ++k) {
            bytes[i + k] = static_cast<char>(text[i + k]);
        }
    }
    for (; i < text.size(); ++i) {
        bytes[i] = static_cast<char>(text[i]);
    }
}

}  // namespace ut

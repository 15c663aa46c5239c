/// Hashing of names. Seeded at random for each process, so that a file cannot be made whose names
/// all fall into one place.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

std::uint64_t piaHashSeed();

inline std::uint64_t piaMix(std::uint64_t state, std::uint64_t value) {
    state = (state ^ value) * 0x9E3779B97F4A7C15U;
    return state ^ (state >> 32U);
}

/// Hash of ASCII text, eight bytes at a time.
inline std::uint64_t piaHash(std::string_view text, std::uint64_t seed) {
    std::uint64_t state = seed ^ text.size();
    const char* bytes = text.data();
    std::size_t left = text.size();
    for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t)) {
        std::uint64_t chunk = 0;
        std::memcpy(&chunk, bytes, sizeof chunk);
        state = piaMix(state, chunk);
        bytes += sizeof chunk;
    }
    std::uint64_t rest = 0;
    for (; left > 0; --left) {
        rest = (rest << 8U) | static_cast<unsigned char>(*bytes++);
    }
    return piaMix(state, rest);
}

/// Hash of wide text.
inline std::uint64_t piaHash(std::wstring_view text, std::uint64_t seed) {
    std::uint64_t state = seed ^ text.size();
    for (const wchar_t character : text) {
        state = piaMix(state, static_cast<std::uint64_t>(character));
    }
    return state;
}

#include "fuzz/sound_file.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>

#include "pia/container.h"

std::string storedStream(std::string_view body) {
    constexpr std::size_t longest = 0xFFFF;
    std::string stream = "\x78\x01";
    const auto sum = static_cast<std::uint32_t>(
        adler32(1, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size())));
    bool last = false;
    while (!last) {
        const std::string_view block = body.substr(0, longest);
        body.remove_prefix(block.size());
        last = body.empty();
        const auto length = static_cast<unsigned>(block.size());
        stream += static_cast<char>(last);
        for (const unsigned half : {length, ~length}) {
            stream += static_cast<char>(half & 0xFFU);
            stream += static_cast<char>(half >> 8U & 0xFFU);
        }
        stream += block;
    }
    for (int shift = 24; shift >= 0; shift -= 8) {
        stream += static_cast<char>(sum >> static_cast<unsigned>(shift) & 0xFFU);
    }
    return stream;
}

std::string storedFile(std::string_view body, PiaKind kind) {
    const std::string stream = storedStream(body);
    return pia_header::encode(static_cast<int>(kind), static_cast<std::uint32_t>(body.size()),
                              stream) +
           stream;
}

bool isReplay = false;

bool chosen(std::string_view input, std::uint64_t count) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : input) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    return isReplay || (hash >> 32U) % count == 0;
}

InputParts partsOf(std::string_view input) {
    const std::size_t divider = input.find(partsDivider);
    if (divider == std::string_view::npos) {
        return {input, {}};
    }
    return {input.substr(0, divider + 1), input.substr(divider + partsDivider.size())};
}

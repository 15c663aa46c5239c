#include "pia/container.h"

#include "platform/utcore/codec.h"

namespace pia_header {

namespace {

constexpr std::string_view text = "PIAFILEVERSION_2.0,CTBVER1,compress\r\npmzlibcodec";
constexpr std::size_t kindOffset = 19;
constexpr std::size_t kindLength = 3;
constexpr std::size_t checksumOffset = 48;
constexpr std::string_view kindWords[] = {"CTB", "STB", "PC3"};

static_assert(text.size() == checksumOffset);
static_assert(text[versionOffset] == version2Digit);
static_assert(text.substr(kindOffset, kindLength) == kindWords[0]);

std::uint32_t loadLittleEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (std::size_t index = 4; index-- > 0;) {
        value = (value << 8U) | static_cast<unsigned char>(bytes[index]);
    }
    return value;
}

void appendLittleEndian(std::string& bytes, std::uint32_t value) {
    for (int index = 0; index < 4; ++index) {
        bytes.push_back(static_cast<char>(value & 0xFFU));
        value >>= 8U;
    }
}

}  // namespace

Fields decode(std::string_view file) {
    Fields fields;
    const bool frameHolds =
        file.substr(0, kindOffset) == text.substr(0, kindOffset) &&
        file.substr(kindOffset + kindLength, checksumOffset - kindOffset - kindLength) ==
            text.substr(kindOffset + kindLength);
    for (std::size_t kind = 0; frameHolds && kind < std::size(kindWords); ++kind) {
        if (file.substr(kindOffset, kindLength) == kindWords[kind]) {
            fields.kind = static_cast<PiaKind>(kind);
        }
    }
    fields.checksum = loadLittleEndian(file.substr(checksumOffset, 4));
    fields.bodyBytes = loadLittleEndian(file.substr(lengthsOffset, 4));
    fields.compressedBytes = loadLittleEndian(file.substr(lengthsOffset + 4, 4));
    return fields;
}

std::string encode(int kind, std::uint32_t bodyBytes, std::string_view stream) {
    std::string lengths;
    appendLittleEndian(lengths, bodyBytes);
    appendLittleEndian(lengths, static_cast<std::uint32_t>(stream.size()));

    std::string header(text);
    if (kind > 0 && kind < static_cast<int>(std::size(kindWords))) {
        header.replace(kindOffset, kindLength, kindWords[kind]);
    }
    appendLittleEndian(header, checksum(lengths, stream));
    return header + lengths;
}

std::uint32_t checksum(std::string_view lengths, std::string_view stream) {
    return ut::codec::adler32(ut::codec::adler32(0, lengths), stream);
}

}  // namespace pia_header

/// The 60-byte header of a version-2 file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <platen/pia.h>

namespace pia_header {

inline constexpr std::size_t size = 60;
/// Where the lengths begin that the checksum covers together with the compressed data.
inline constexpr std::size_t lengthsOffset = 52;
/// The place of the version digit by which a reader is chosen.
inline constexpr std::size_t versionOffset = 15;
inline constexpr char version2Digit = '2';

struct Fields {
    /// Empty when the text is not that of a known kind.
    std::optional<PiaKind> kind;
    std::uint32_t checksum = 0;
    std::uint32_t bodyBytes = 0;
    std::uint32_t compressedBytes = 0;
};

/// The fields of the header at the beginning of `file`, which has at least 60 bytes.
Fields decode(std::string_view file);

/// The header for a body of `bodyBytes` bytes that was compressed to `stream`. A kind that is none
/// of the known ones leaves the text of kind CTB.
std::string encode(int kind, std::uint32_t bodyBytes, std::string_view stream);

/// The checksum over the 8 bytes of the lengths as stored, then the compressed data. Its running
/// value starts at 0, not at the usual 1.
std::uint32_t checksum(std::string_view lengths, std::string_view stream);

}  // namespace pia_header

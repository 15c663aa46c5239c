/// The codec behind `ZlibEngine`: one of `codec_libdeflate.cpp` and `codec_zlib.cpp`, which CMake
/// chooses. Why a stream cannot be read is zlib's to say in both cases (`zlib_engine.cpp`).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <platen/utcore.h>

namespace ut::codec {

/// Adler-32 of `bytes` (RFC 1950), going on from `start`, whose halves are below 65521.
std::uint32_t adler32(std::uint32_t start, std::string_view bytes);

/// `ZlibEngine::compress`. The levels of two codecs do not give the same bytes.
int compress(std::string_view source, ByteBuffer& target, int level);

/// Inflates the stream at the beginning of `source` when it is sound and gives no more bytes than
/// the capacity of `target`; `consumed` is its length. False without a reason otherwise, and always
/// when zlib is all there is: then zlib reads the stream anew.
bool inflate(std::string_view source, ByteBuffer& target, std::size_t& consumed);

}  // namespace ut::codec

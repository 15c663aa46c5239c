#include <zlib.h>

#include <limits>

#include "platform/utcore/codec.h"

namespace ut::codec {

std::uint32_t adler32(std::uint32_t start, std::string_view bytes) {
    // Without a buffer zlib starts anew.
    return bytes.empty() ? start
                         : static_cast<std::uint32_t>(::adler32_z(
                               start, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

int compress(std::string_view source, ByteBuffer& target, int level) {
    // Lengths have 32 bits on some systems, so a source whose bound approaches them is refused.
    if (source.size() > std::numeric_limits<uInt>::max() / 2) {
        return Z_BUF_ERROR;
    }
    const auto size = static_cast<uLong>(source.size());
    uLong length = compressBound(size);
    target.reserve(target.size() + length);
    const int result = compress2(reinterpret_cast<Bytef*>(target.data() + target.size()), &length,
                                 reinterpret_cast<const Bytef*>(source.data()), size, level);
    if (result == Z_OK) {
        target.setSize(target.size() + length);
    }
    return result;
}

bool inflate(std::string_view, ByteBuffer&, std::size_t&) { return false; }

}  // namespace ut::codec

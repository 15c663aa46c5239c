#include <libdeflate.h>
#include <zlib.h>

#include <memory>

#include "platform/utcore/codec.h"

namespace ut::codec {

namespace {

struct Release {
    void operator()(libdeflate_compressor* codec) const { libdeflate_free_compressor(codec); }
    void operator()(libdeflate_decompressor* codec) const { libdeflate_free_decompressor(codec); }
};

constexpr int usualLevel = 6;

}  // namespace

std::uint32_t adler32(std::uint32_t start, std::string_view bytes) {
    // Without a buffer libdeflate starts anew.
    return bytes.empty() ? start : libdeflate_adler32(start, bytes.data(), bytes.size());
}

int compress(std::string_view source, ByteBuffer& target, int level) {
    if (level < Z_DEFAULT_COMPRESSION || level > Z_BEST_COMPRESSION) {
        return Z_STREAM_ERROR;
    }
    const std::unique_ptr<libdeflate_compressor, Release> compressor(
        libdeflate_alloc_compressor(level == Z_DEFAULT_COMPRESSION ? usualLevel : level));
    if (!compressor) {
        return Z_MEM_ERROR;
    }
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), source.size());
    target.reserve(target.size() + bound);
    const std::size_t size =
        libdeflate_zlib_compress(compressor.get(), source.data(), source.size(),
                                 target.data() + target.size(), target.capacity() - target.size());
    if (size == 0) {
        return Z_BUF_ERROR;
    }
    target.setSize(target.size() + size);
    return Z_OK;
}

bool inflate(std::string_view source, ByteBuffer& target, std::size_t& consumed) {
    const std::unique_ptr<libdeflate_decompressor, Release> decompressor(
        libdeflate_alloc_decompressor());
    std::size_t size = 0;
    if (!decompressor || libdeflate_zlib_decompress_ex(
                             decompressor.get(), source.data(), source.size(), target.data(),
                             target.capacity(), &consumed, &size) != LIBDEFLATE_SUCCESS) {
        return false;
    }
    target.setSize(size);
    return true;
}

}  // namespace ut::codec

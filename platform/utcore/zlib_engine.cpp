#include <zlib.h>

#include <algorithm>
#include <limits>

#include <platen/utcore.h>
#include "platform/utcore/codec.h"

namespace ut {

namespace {

/// zlib counts the bytes of one call in 32 bits.
constexpr std::uint64_t longestStep = std::numeric_limits<uInt>::max();

uInt step(std::uint64_t bytes) { return static_cast<uInt>(std::min(bytes, longestStep)); }

Bytef* writable(const char* bytes) { return reinterpret_cast<Bytef*>(const_cast<char*>(bytes)); }

/// What zlib's `inflate` is given and lets go of again on every way out.
class Inflater {
public:
    Inflater() : status_(inflateInit(&stream_)) {}
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() { inflateEnd(&stream_); }

    int status() const { return status_; }
    z_stream& stream() { return stream_; }

private:
    z_stream stream_{};
    int status_;
};

/// Room for the first attempt: the hint, if the source is likely to hold that much. Bodies of
/// documents pack to a tenth or a thirtieth; what was packed further gets room that grows.
std::uint64_t firstRoom(std::uint64_t sourceSize, std::uint64_t sizeHint) {
    constexpr std::uint64_t least = 4096;
    constexpr std::uint64_t mostPacked = 128;
    const std::uint64_t believed = std::max(sourceSize * mostPacked, least);
    // The byte more lets zlib see the stream's end without growing once again.
    return std::clamp(sizeHint, least, believed) + 1;
}

/// Inflates into room that grows up to `mostRoom`, and knows why it cannot.
int inflateGrowing(std::string_view source, ByteBuffer& target, std::uint64_t mostRoom,
                   std::uint64_t limit, std::size_t& consumed, ZlibEngine::Stop& stop) {
    Inflater inflater;
    if (inflater.status() != Z_OK) {
        stop = ZlibEngine::Stop::Corrupt;
        return inflater.status();
    }
    z_stream& stream = inflater.stream();
    stream.next_in = writable(source.data());
    for (;;) {
        if (target.size() == target.capacity()) {
            target.reserve(static_cast<std::size_t>(
                std::min<std::uint64_t>(std::uint64_t{target.capacity()} * 2, mostRoom)));
        }
        const uInt input = step(source.size() - consumed);
        const uInt room = step(target.capacity() - target.size());
        stream.avail_in = input;
        stream.next_out = writable(target.data() + target.size());
        stream.avail_out = room;
        // "Finish" promises room for everything, and saves copying the window when it holds.
        const int result = inflate(&stream, Z_FINISH);
        consumed += input - stream.avail_in;
        target.setSize(target.size() + (room - stream.avail_out));

        if (target.size() > limit) {
            target.setSize(static_cast<std::size_t>(limit));
            stop = ZlibEngine::Stop::TooLarge;
            return Z_BUF_ERROR;
        }
        if (result == Z_STREAM_END) {
            return Z_OK;
        }
        if (result != Z_OK && result != Z_BUF_ERROR) {
            stop = ZlibEngine::Stop::Corrupt;
            return result == Z_NEED_DICT ? Z_DATA_ERROR : result;
        }
        if (stream.avail_out > 0 && consumed == source.size()) {
            stop = ZlibEngine::Stop::Truncated;
            return Z_BUF_ERROR;
        }
    }
}

}  // namespace

int ZlibEngine::compress(std::string_view source, ByteBuffer& target, int level) {
    return codec::compress(source, target, level);
}

int ZlibEngine::decompress(std::string_view source, ByteBuffer& target, std::uint64_t sizeHint,
                           std::uint64_t limit, std::size_t& consumed, Stop& stop) {
    consumed = 0;
    stop = Stop::None;
    target.setSize(0);
    // One byte beyond the limit tells a body that ends there from one that goes on.
    const std::uint64_t mostRoom = std::max(limit, limit + 1);
    target.reserve(
        static_cast<std::size_t>(std::min(firstRoom(source.size(), sizeHint), mostRoom)));
    if (codec::inflate(source, target, consumed) && target.size() <= limit) {
        return Z_OK;
    }
    consumed = 0;
    target.setSize(0);
    return inflateGrowing(source, target, mostRoom, limit, consumed, stop);
}

}  // namespace ut

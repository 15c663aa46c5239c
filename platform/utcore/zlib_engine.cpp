#include <zlib.h>

#include <algorithm>
#include <limits>

#include "utcore.h"

namespace ut {

namespace {

/// zlib counts the bytes of one call in 32 bits.
constexpr std::uint64_t longestStep = std::numeric_limits<uInt>::max();

uInt step(std::uint64_t bytes) { return static_cast<uInt>(std::min(bytes, longestStep)); }

Bytef* writable(const char* bytes) { return reinterpret_cast<Bytef*>(const_cast<char*>(bytes)); }

/// What `inflate` is given and lets go of again on every way out.
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

/// Room for the first attempt: the hint, if the source can hold that much. Deflate cannot pack
/// more than 1032 bytes into one.
std::uint64_t firstRoom(std::uint64_t sourceSize, std::uint64_t sizeHint) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t possible =
        sourceSize > (most - 65536) / 1032 ? most : sourceSize * 1032 + 65536;
    // The byte more lets the stream's end be seen without growing once again.
    const std::uint64_t wanted = std::clamp<std::uint64_t>(sizeHint, 4096, most - 1) + 1;
    return std::min(wanted, possible);
}

}  // namespace

int ZlibEngine::compress(std::string_view source, ByteBuffer& target, int level) {
    // The bound is 32 bits wide on some systems, so a source that approaches them is refused.
    if (source.size() > longestStep / 2) {
        return Z_BUF_ERROR;
    }
    const auto length = static_cast<uLong>(source.size());
    const std::size_t before = target.size();
    uLong written = compressBound(length);
    target.reserve(before + written);
    const int result = compress2(writable(target.data() + before), &written,
                                 reinterpret_cast<const Bytef*>(source.data()), length, level);
    if (result == Z_OK) {
        target.setSize(before + written);
    }
    return result;
}

int ZlibEngine::decompress(std::string_view source, ByteBuffer& target, std::uint64_t sizeHint,
                           std::uint64_t limit, std::size_t& consumed, Stop& stop) {
    consumed = 0;
    stop = Stop::None;
    target.setSize(0);
    Inflater inflater;
    if (inflater.status() != Z_OK) {
        stop = Stop::Corrupt;
        return inflater.status();
    }
    z_stream& stream = inflater.stream();
    stream.next_in = writable(source.data());

    // One byte beyond the limit tells a body that ends there from one that goes on.
    const std::uint64_t mostRoom = std::max(limit, limit + 1);
    target.reserve(
        static_cast<std::size_t>(std::min(firstRoom(source.size(), sizeHint), mostRoom)));
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
            stop = Stop::TooLarge;
            return Z_BUF_ERROR;
        }
        if (result == Z_STREAM_END) {
            return Z_OK;
        }
        if (result != Z_OK && result != Z_BUF_ERROR) {
            stop = Stop::Corrupt;
            return result == Z_NEED_DICT ? Z_DATA_ERROR : result;
        }
        if (stream.avail_out > 0 && consumed == source.size()) {
            stop = Stop::Truncated;
            return Z_BUF_ERROR;
        }
    }
}

}  // namespace ut

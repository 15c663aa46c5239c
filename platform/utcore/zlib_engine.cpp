#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include <platen/utcore.h>
#include "platform/utcore/adler32.h"

namespace ut {

namespace {

/// zlib counts the bytes of one call in 32 bits.
constexpr std::uint64_t longestStep = std::numeric_limits<uInt>::max();

uInt step(std::uint64_t bytes) { return static_cast<uInt>(std::min(bytes, longestStep)); }

Bytef* writable(const char* bytes) { return reinterpret_cast<Bytef*>(const_cast<char*>(bytes)); }

// The checksum of a stream is summed here: zlib's own summing takes a third of inflating.
constexpr std::uint32_t checksumStart = 1;
constexpr std::size_t checksumSize = 4;

/// Says deflate with a window of 32 KiB and how hard it tried (RFC 1950).
std::array<unsigned char, 2> streamHeader(int level) {
    const unsigned effort = level == Z_DEFAULT_COMPRESSION || level == 6 ? 2
                            : level >= 7                                 ? 3
                            : level >= 2                                 ? 1
                                                                         : 0;
    const unsigned header = 0x7800U | (effort << 6U);
    const unsigned divisible = header + 31 - header % 31;
    return {static_cast<unsigned char>(divisible >> 8U), static_cast<unsigned char>(divisible)};
}

std::array<unsigned char, checksumSize> checksumBytes(std::string_view body) {
    const std::uint32_t sum = adler32(checksumStart, body);
    return {static_cast<unsigned char>(sum >> 24U), static_cast<unsigned char>(sum >> 16U),
            static_cast<unsigned char>(sum >> 8U), static_cast<unsigned char>(sum)};
}

/// What `deflate` is given and lets go of again on every way out. Without header and checksum.
class Deflater {
public:
    explicit Deflater(int level)
        : status_(deflateInit2(&stream_, level, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL - 1,
                               Z_DEFAULT_STRATEGY)) {}
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() { deflateEnd(&stream_); }

    int status() const { return status_; }
    z_stream& stream() { return stream_; }

private:
    z_stream stream_{};
    int status_;
};

/// What `inflate` is given and lets go of again on every way out. It reads the checksum of the
/// stream without looking at it.
class Inflater {
public:
    Inflater() : status_(inflateInit(&stream_)) {
        if (status_ == Z_OK) {
            status_ = inflateValidate(&stream_, 0);
        }
    }
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
    Deflater deflater(level);
    if (deflater.status() != Z_OK) {
        return deflater.status();
    }
    // Holds the header and the checksum as well.
    const uLong bound = compressBound(static_cast<uLong>(source.size()));
    target.reserve(target.size() + bound);
    const auto header = streamHeader(level);
    const auto checksum = checksumBytes(source);

    char* const begin = target.data() + target.size();
    char* const body = std::copy(header.begin(), header.end(), begin);
    z_stream& stream = deflater.stream();
    stream.next_in = writable(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = writable(body);
    stream.avail_out = static_cast<uInt>(bound - header.size() - checksum.size());
    const int result = deflate(&stream, Z_FINISH);
    if (result != Z_STREAM_END) {
        return result == Z_OK ? Z_BUF_ERROR : result;
    }
    const char* end = std::copy(checksum.begin(), checksum.end(), body + stream.total_out);
    target.setSize(target.size() + static_cast<std::size_t>(end - begin));
    return Z_OK;
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
            const auto checksum = checksumBytes(target.view());
            if (std::memcmp(source.data() + consumed - checksum.size(), checksum.data(),
                            checksum.size()) != 0) {
                stop = Stop::Corrupt;
                return Z_DATA_ERROR;
            }
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

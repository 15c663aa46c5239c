// Any bytes as a file: what its container says, how it inflates, what a check makes of it.
//
// Inflating is slower than what the others do, and one input in 32 is checked whole.

#include <zlib.h>

#include <cstdint>
#include <string>
#include <string_view>

#include <platen/edit_files.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/utcore.h>
#include "fuzz/counted_memory.h"
#include "fuzz/oracle.h"
#include "fuzz/sound_file.h"
#include "pia/container.h"
#include "tests/support/trees.h"

namespace {

/// Few bytes may inflate to very many.
constexpr std::uint64_t mostBody = std::uint64_t{64} << 10U;

/// What zlib alone makes of a stream: false when it refuses it or when there is more than
/// `mostBody`.
bool inflatedByZlib(std::string_view stream, std::string& body, std::size_t& consumed) {
    z_stream z{};
    require(inflateInit(&z) == Z_OK);
    body.resize(mostBody + 1);
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(stream.data()));
    z.avail_in = static_cast<uInt>(stream.size());
    z.next_out = reinterpret_cast<Bytef*>(body.data());
    z.avail_out = static_cast<uInt>(body.size());
    const bool done = inflate(&z, Z_FINISH) == Z_STREAM_END && z.total_out <= mostBody;
    body.resize(z.total_out);
    consumed = z.total_in;
    inflateEnd(&z);
    return done;
}

/// Whatever zlib reads is read, to the same bytes; a stream of unusual tables is read, too.
void requireSameAsZlib(std::string_view stream) {
    std::string expected;
    std::size_t expectedConsumed = 0;
    const bool byZlib = inflatedByZlib(stream, expected, expectedConsumed);
    ut::ByteBuffer body;
    std::size_t consumed = 0;
    auto stop = ut::ZlibEngine::Stop::None;
    const bool done = ut::ZlibEngine::decompress(stream, body, 0, mostBody, consumed, stop) == 0;
    require(body.size() <= mostBody);
    require(done == (stop == ut::ZlibEngine::Stop::None));
    if (byZlib) {
        require(done && body.view() == expected && consumed == expectedConsumed);
    } else if (done) {
        const auto sum =
            adler32(1, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
        std::uint32_t stored = 0;
        for (const char byte : stream.substr(consumed - 4, 4)) {
            stored = stored << 8U | static_cast<unsigned char>(byte);
        }
        require(sum == stored);
    }
}

/// What we pack, zlib unpacks.
void requireZlibReads(std::string_view body) {
    for (const int level : {0, 1, 6, 9}) {
        ut::ByteBuffer stream;
        require(ut::ZlibEngine::compress(body, stream, level) == 0);
        std::string back;
        std::size_t consumed = 0;
        require(inflatedByZlib(stream.view(), back, consumed) && back == body &&
                consumed == stream.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    PiaReadOptions options;
    options.limits.bodyBytes = mostBody;
    PiaInput input;
    bool opened = false;
    {
        const BoundedMemory bounded(size + mostBody, 160, 1.0);
        opened = input.openBytes(file, options);
    }
    require(opened != input.report().failure().has_value());
    options.verifyHeaderText = options.verifyLengths = options.verifyChecksum = true;
    PiaInput strict;
    const bool holds = strict.openBytes(file, options);
    require(opened || !holds);
    if (file.size() < pia_header::size || file[pia_header::versionOffset] != '2') {
        return 0;
    }
    const std::string_view stream = file.substr(pia_header::size);
    requireSameAsZlib(stream);
    if (!opened) {
        return 0;
    }
    const PiaContainer& container = input.container();
    require(container.version == 2 && container.bodyBytes == input.body().size());
    const pia_header::Fields fields = pia_header::decode(file);
    require(holds ==
            (fields.kind && container.checksumHolds() && fields.bodyBytes == container.bodyBytes &&
             fields.compressedBytes == container.compressedBytes));
    if (chosen(file, 32)) {
        const platen::CheckResult checked =
            platen::checkBytes(file, {}, {.reading = {.limits = {.bodyBytes = mostBody}}});
        require(checked.verdict != platen::Verdict::Sound || holds);
        ut::ByteBuffer again;
        const platen::WriteResult written =
            platen::encodeFile(*input.root(), platen::FileForm::Compressed, PiaKind::Pc3, again);
        require(!written.differs);
        requireZlibReads(input.body());
    }
    return 0;
}

// Inputs that are whole files: the body in a container that is sound, or damaged afterwards.

#include <zlib.h>

#include <algorithm>

#include "fuzz/mutation.h"
#include "fuzz/sound_file.h"
#include "pia/container.h"
#include "tests/support/trees.h"

namespace {

/// The file with its lengths and its checksum as they should be.
std::string corrected(std::string file, std::size_t bodyBytes) {
    const PiaKind kind = pia_header::decode(file).kind.value_or(PiaKind::Ctb);
    const std::string stream = file.substr(pia_header::size);
    return pia_header::encode(static_cast<int>(kind), static_cast<std::uint32_t>(bodyBytes),
                              stream) +
           stream;
}

std::string packed(std::string_view body, Mutation& mutation) {
    const auto kind = static_cast<PiaKind>(mutation.below(3));
    if (mutation.oneIn(2)) {
        return storedFile(body, kind);
    }
    constexpr int levels[] = {1, 6, 9};
    uLongf length = compressBound(static_cast<uLong>(body.size()));
    std::string stream(length, '\0');
    compress2(reinterpret_cast<Bytef*>(stream.data()), &length,
              reinterpret_cast<const Bytef*>(body.data()), static_cast<uLong>(body.size()),
              levels[mutation.below(3)]);
    stream.resize(length);
    return pia_header::encode(static_cast<int>(kind), static_cast<std::uint32_t>(body.size()),
                              stream) +
           stream;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t mostBytes, unsigned seed) {
    Mutation mutation(seed);
    std::string file(reinterpret_cast<const char*>(data), size);
    const std::string body = bodyOf(file);
    if (!body.empty() && body.size() < 2 * mostBytes && mutation.oneIn(3)) {
        file = packed(mutation.body(body, body, mostBytes), mutation);
        if (mutation.oneIn(2)) {
            return putInput(file, data, mostBytes);
        }
    }
    file = mutation.bytes(file, mostBytes);
    if (file.size() > pia_header::size && mutation.oneIn(2)) {
        file = corrected(file, mutation.oneIn(4) ? mutation.below(9000) : bodyOf(file).size());
    }
    return putInput(file, data, mostBytes);
}

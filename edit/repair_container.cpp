#include "edit/repair_container.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <utility>

#include <platen/utcore.h>
#include "pia/container.h"

namespace platen {
namespace {

using Stop = ut::ZlibEngine::Stop;

/// What a zlib stream begins with as writers of this format make it (RFC 1950).
constexpr std::string_view usualStreamHeader = "\x78\x9C";
constexpr int usualLevel = 6;

/// What came of inflating a stream.
struct Inflated {
    ut::ByteBuffer bytes;
    std::size_t consumed = 0;
    Stop stop = Stop::Corrupt;
    bool whole = false;
};

Inflated inflate(std::string_view stream, std::uint64_t sizeHint, std::uint64_t limit) {
    Inflated result;
    result.whole = ut::ZlibEngine::decompress(stream, result.bytes, sizeHint, limit,
                                              result.consumed, result.stop) == 0;
    return result;
}

/// Whether bytes begin as bodies do, which damaged streams hardly ever give by chance.
bool looksLikeBody(std::string_view bytes) {
    constexpr std::size_t enough = 64;
    const std::string_view beginning = bytes.substr(0, enough);
    const auto isText = [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte >= ' ' || character == '\n' || character == '\r' || character == '\t';
    };
    return beginning.size() > 1 && std::ranges::all_of(beginning, isText) &&
           beginning.find_first_of("={") != std::string_view::npos;
}

bool looksLikeHeader(std::string_view file) {
    const std::string sound = pia_header::encode(0, 0, {});
    constexpr std::size_t textLength = 48;
    constexpr std::size_t enough = textLength / 2;
    std::size_t equal = 0;
    for (std::size_t index = 0; index < std::min(file.size(), textLength); ++index) {
        equal += file[index] == sound[index] ? 1 : 0;
    }
    constexpr std::size_t beginning = 256;
    return equal >= enough || file.substr(0, beginning).find("pmzlibcodec") != file.npos;
}

/// What the letters in the header say, wherever they are.
std::optional<PiaKind> kindInHeader(std::string_view file) {
    constexpr std::array<std::string_view, 3> letters{"CTB", "STB", "PC3"};
    constexpr std::size_t lettersOffset = 19;
    constexpr std::size_t beginning = 128;
    for (std::size_t kind = 0; kind < letters.size(); ++kind) {
        const std::string words = std::string(letters[kind]) + "VER1";
        if ((file.size() > lettersOffset &&
             file.substr(lettersOffset).starts_with(letters[kind])) ||
            file.substr(0, beginning).find(words) != file.npos) {
            return static_cast<PiaKind>(kind);
        }
    }
    return std::nullopt;
}

std::wstring number(std::uint64_t value) { return std::to_wstring(value); }

/// Where the compressed data begins and what it gives.
class StreamFinder {
public:
    StreamFinder(std::string_view file, const PiaLimits& limits) : file_(file), limits_(limits) {}

    /// False when nothing in the file is the compressed data of a body.
    bool find() { return tryAt(pia_header::size) || tryRaw() || lookFor(); }

    std::size_t offset = 0;
    /// The first two bytes of the data were replaced.
    bool headerReplaced = false;
    Inflated data;

private:
    bool take(std::string_view stream, std::size_t at) {
        // Fewer bytes than this any data may give by chance.
        constexpr std::size_t surelyText = 24;
        data = inflate(stream, 0, limits_.bodyBytes);
        offset = at;
        // At its place, a checksum that holds says enough.
        return (data.whole && at == pia_header::size) ||
               (data.bytes.size() >= (data.whole ? 0 : surelyText) &&
                (data.bytes.size() == 0 || looksLikeBody(data.bytes.view())));
    }

    bool tryAt(std::size_t at) { return at < file_.size() && take(file_.substr(at), at); }

    bool tryRaw() {
        constexpr std::size_t first = pia_header::size + usualStreamHeader.size();
        if (file_.size() <= first) {
            return false;
        }
        const std::string stream = std::string(usualStreamHeader).append(file_.substr(first));
        headerReplaced = take(stream, pia_header::size);
        return headerReplaced;
    }

    bool lookFor() {
        constexpr std::size_t mostBytes = 4096;
        constexpr std::uint64_t probe = 512;
        const std::size_t end = std::min(file_.size(), mostBytes);
        for (std::size_t at = 0; at + 2 < end; ++at) {
            const auto first = static_cast<unsigned char>(file_[at]);
            const auto second = static_cast<unsigned char>(file_[at + 1]);
            const bool mayBegin = (first & 0x0FU) == 8 && first < 0x80 && (second & 0x20U) == 0 &&
                                  (first * 256U + second) % 31 == 0;
            if (mayBegin && looksLikeBody(inflate(file_.substr(at), 0, probe).bytes.view()) &&
                tryAt(at)) {
                return true;
            }
        }
        return false;
    }

    std::string_view file_;
    const PiaLimits& limits_;
};

/// Notes what of the header does not fit the data.
void compareHeader(std::string_view header, const StreamFinder& found, std::size_t streamRoom,
                   std::string_view stream, RepairNotes& notes) {
    const pia_header::Fields fields = pia_header::decode(header);
    const std::uint64_t bodyBytes = found.data.bytes.size();
    const std::uint64_t consumed = found.data.consumed;
    const auto compare = [&](RepairCode code, std::size_t offset, std::uint64_t stored,
                             std::uint64_t actual) {
        if (stored != actual) {
            notes.assume(
                {.code = code, .offset = offset, .found = number(stored), .taken = number(actual)});
        }
    };
    const std::uint32_t checksum = pia_header::checksum(header.substr(pia_header::lengthsOffset),
                                                        stream.substr(0, found.data.consumed));
    compare(RepairCode::Checksum, pia_header::lengthsOffset - 4, fields.checksum, checksum);
    compare(RepairCode::BodyLength, pia_header::lengthsOffset, fields.bodyBytes, bodyBytes);
    compare(RepairCode::CompressedLength, pia_header::lengthsOffset + 4, fields.compressedBytes,
            consumed);
    if (streamRoom != consumed) {
        const std::uint64_t rest = streamRoom - consumed;
        notes.assume({.code = RepairCode::BytesAfterStream,
                      .offset = found.offset + consumed,
                      .found = number(rest) + L" bytes"});
        notes.lose({.unit = Loss::Unit::Bytes, .count = rest, .offset = found.offset + consumed});
    }
}

/// Notes why the data ends early, and says whether the body does, too.
bool noteFault(const StreamFinder& found, std::uint64_t storedLength, std::size_t streamRoom,
               RepairNotes& notes) {
    const std::uint64_t read = found.data.bytes.size();
    const bool isComplete = read == storedLength;
    const bool isCut = found.data.stop == Stop::Truncated;
    notes.assume({.code = isCut        ? RepairCode::StreamTruncated
                          : isComplete ? RepairCode::StreamUnverified
                                       : RepairCode::StreamCorrupt,
                  .offset = found.offset + found.data.consumed,
                  .taken = number(read) + L" bytes of text"});
    if (isComplete) {
        return false;
    }
    if (storedLength > read) {
        notes.lose({.unit = Loss::Unit::Bytes,
                    .count = storedLength - read,
                    .text = L"of the body, by the length in the header"});
    } else if (!isCut) {
        notes.lose({.unit = Loss::Unit::Bytes,
                    .count = streamRoom - found.data.consumed,
                    .offset = found.offset + found.data.consumed,
                    .text = L"of the compressed data"});
    }
    return true;
}

/// Undoes what a transfer as text does, which is certain when it gives a sound container.
std::optional<std::string> withoutReturns(std::string_view file, const PiaLimits& limits) {
    constexpr std::size_t lineEnd = 35;
    if (file.size() <= lineEnd || !file.substr(lineEnd).starts_with("\r\r\n")) {
        return std::nullopt;
    }
    std::string undone;
    undone.reserve(file.size());
    for (std::size_t index = 0; index < file.size(); ++index) {
        if (!file.substr(index).starts_with("\r\n")) {
            undone.push_back(file[index]);
        }
    }
    PiaFileIn reader;
    PiaReadOptions options{.limits = limits};
    options.verifyHeaderText = true;
    options.verifyLengths = true;
    options.verifyChecksum = true;
    return reader.openBytes(undone, options) == 0 ? std::optional(std::move(undone)) : std::nullopt;
}

RecoveredBody bodyIn(StreamFinder& found, std::string_view file, RepairNotes& notes) {
    const std::size_t streamRoom = file.size() - found.offset;
    const bool hasHeader = looksLikeHeader(file);
    RecoveredBody body;
    body.kind = hasHeader ? kindInHeader(file) : std::nullopt;
    const bool isAtPlace = found.offset == pia_header::size;
    if (!hasHeader) {
        notes.assume({.code = RepairCode::HeaderMissing, .offset = 0});
    } else if (!isAtPlace || !pia_header::decode(file).kind) {
        notes.assume({.code = RepairCode::HeaderText, .offset = 0});
    }
    if (hasHeader && !isAtPlace) {
        notes.assume({.code = RepairCode::StreamMoved,
                      .offset = found.offset,
                      .found = number(found.offset),
                      .taken = number(pia_header::size)});
    }
    if (found.headerReplaced) {
        notes.assume({.code = RepairCode::StreamHeader, .offset = found.offset});
    }
    // What stands before the data, which may have moved with the end of the header.
    const std::string_view header =
        found.offset >= pia_header::size
            ? file.substr(found.offset - pia_header::size, pia_header::size)
            : std::string_view();
    if (!found.data.whole) {
        const std::uint64_t stored = header.empty() ? 0 : pia_header::decode(header).bodyBytes;
        body.torn = noteFault(found, stored, streamRoom, notes);
    } else if (hasHeader && !header.empty()) {
        compareHeader(header, found, streamRoom, file.substr(found.offset), notes);
    }
    body.text = found.data.bytes.view();
    return body;
}

/// Editors begin UTF-8 texts with a mark.
std::string_view withoutMark(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

/// The text of a file that has no container.
RecoveredBody textOf(std::string_view file) {
    const std::string_view text = withoutMark(file);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const bool beginsAsJson = first != std::string_view::npos && text[first] == '{';
    PiaInput input;
    RecoveredBody body;
    if (beginsAsJson || file.starts_with("PIAFILEVERSION_") ||
        (input.openBytes(file) && input.container().version == 3)) {
        body.form = FileForm::Json;
        body.text = file;
    } else {
        body.form = FileForm::BodyText;
        body.text = text;
    }
    return body;
}

}  // namespace

std::optional<RecoveredBody> recoverBody(std::string_view file, const PiaLimits& limits,
                                         RepairNotes& notes, const char*& reason) {
    constexpr const char* tooLarge = "it is larger than the reader takes";
    reason = file.size() > limits.bodyBytes
                 ? tooLarge
                 : "no compressed data of a plotter file can be read in it";
    if (file.size() > limits.bodyBytes) {
        return std::nullopt;
    }
    std::optional<std::string> mended = withoutReturns(file, limits);
    if (mended) {
        notes.assume({.code = RepairCode::LineFeedsTranslated,
                      .found = number(file.size()) + L" bytes",
                      .taken = number(mended->size()) + L" bytes"});
        file = *mended;
    }
    StreamFinder found(file, limits);
    const bool isThere = found.find();
    const bool isWhole =
        isThere && found.data.whole && !found.headerReplaced && found.offset == pia_header::size;
    if (!isWhole && looksLikeHeader(file)) {
        Assumption assumption;
        if (std::optional<std::string> corrected = withByteCorrected(file, limits, assumption)) {
            notes.assume(std::move(assumption));
            StreamFinder again(*corrected, limits);
            return again.find() ? std::optional(bodyIn(again, *corrected, notes)) : std::nullopt;
        }
    }
    if (isThere && found.data.stop == Stop::TooLarge) {
        reason = tooLarge;
        return std::nullopt;
    }
    if (isThere) {
        return bodyIn(found, file, notes);
    }
    return looksLikeHeader(file) && file.substr(0, pia_header::size).find('{') == file.npos
               ? std::nullopt
               : std::optional(textOf(file));
}

std::string containerAround(std::string_view body, PiaKind kind) {
    ut::ByteBuffer stream;
    if (ut::ZlibEngine::compress(body, stream, usualLevel) != 0) {
        return {};
    }
    return pia_header::encode(static_cast<int>(kind), static_cast<std::uint32_t>(body.size()),
                              stream.view())
        .append(stream.view());
}

}  // namespace platen

/// What fuzzers of whole documents share.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "fuzz/counted_memory.h"
#include "fuzz/oracle.h"
#include "fuzz/sound_file.h"
#include "tests/support/trees.h"

/// The body of a document; empty when the writer refused it or warned that it will not read back.
template <class Document>
std::optional<std::string> bodyWritten(const Document& document) {
    PiaTree tree;
    PiaReport report;
    std::string body;
    require(document.writeToBlock(tree.root()));
    if (!piaWriteBody(tree.root(), body, report) || report.warningCount() > 0) {
        return std::nullopt;
    }
    return body;
}

/// Writing rounds numbers and gives lists their numbers, so that the second writing must give the
/// body of the first, not the body that came in. `read(input)` gives a document or null. Gives the
/// body that was written.
template <class Read>
std::optional<std::string> roundTrip(PiaInput& input, Read read) {
    const auto document = read(input);
    require(document != nullptr || input.report().failure());
    std::optional<std::string> body = document ? bodyWritten(*document) : std::nullopt;
    if (!body) {
        return body;
    }
    PiaInput again;
    const auto copy = again.openBody(*body) ? read(again) : nullptr;
    require(copy != nullptr);
    require(bodyWritten(*copy) == body);
    return body;
}

/// Reading a body takes memory in proportion to it: the shortest line is a number's, of three bytes
/// and the line feed.
inline constexpr std::size_t bytesPerByte = 160;
inline constexpr double callsPerByte = 1.0;

/// A body as a document. Now and then it comes in a file, and is written to one.
template <class Read>
void roundTripBody(std::string_view body, Read read) {
    PiaInput input;
    bool opened = false;
    {
        const BoundedMemory bounded(body.size(), bytesPerByte, callsPerByte);
        opened = input.openBody(body);
        if (opened) {
            (void)read(input);
        }
    }
    if (!opened) {
        return;
    }
    PiaInput plain;
    require(plain.openBody(body));
    const std::optional<std::string> written = roundTrip(plain, read);
    if (!written || !chosen(body, 16)) {
        return;
    }
    PiaInput inFile;
    require(inFile.openBytes(storedFile(body, PiaKind::Pc3)));
    require(roundTrip(inFile, read) == written);
    PiaInput again;
    PiaFileOut out;
    ut::ByteBuffer file;
    require(again.openBody(*written) && out.encode(*again.root(), file));
    require(bodyOf(file.view()) == *written);
}

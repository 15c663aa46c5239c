/// What fuzzers of whole documents share.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "fuzz/require.h"
#include "tests/support/trees.h"

/// The file of a document; empty when the writer refused it or warned that it will not read back.
template <class Document>
std::optional<std::string> fileOf(const Document& document) {
    PiaTree tree;
    PiaFileOut out;
    ut::ByteBuffer file;
    require(document.writeToBlock(tree.root()));
    if (!out.encode(tree.root(), file) || out.report().warningCount() > 0) {
        return std::nullopt;
    }
    return std::string(file.view());
}

/// Writing rounds numbers and gives lists their numbers, so that the second writing must give the
/// body of the first, not the body that came in. `read(input)` gives a document or null.
template <class Read>
void roundTrip(PiaInput& input, Read read) {
    const auto document = read(input);
    require(document != nullptr || input.report().failure());
    const std::optional<std::string> file = document ? fileOf(*document) : std::nullopt;
    if (!file) {
        return;
    }
    PiaInput again;
    const auto copy = again.openBytes(*file) ? read(again) : nullptr;
    require(copy != nullptr);
    const std::optional<std::string> next = fileOf(*copy);
    require(next && bodyOf(*next) == bodyOf(*file));
}

/// Compressed bytes are hard to mutate into sense, so that the input is also taken as the body of a
/// sound file.
template <class Read>
void roundTripBytes(std::string_view bytes, Read read) {
    PiaInput whole;
    if (whole.openBytes(bytes)) {
        roundTrip(whole, read);
    }
    PiaInput wrapped;
    if (wrapped.openBytes(fileAround(bytes, PiaKind::Pc3))) {
        roundTrip(wrapped, read);
    }
}

/// Comparing and building trees in tests and fuzzers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include "pia/entry_taker.h"

/// True when the blocks hold equal items in the same order, at every depth.
bool equalTrees(const PiaBlock& left, const PiaBlock& right);

/// The lines of all items below a block, in written order.
std::vector<std::uint32_t> linesOf(const PiaBlock& block);

/// True when the line of `body` that a finding names begins with the last name of its path, or
/// when a key is missing, with the name of the block that should hold it.
bool namesItsLine(std::string_view body, const PiaFinding& finding);

/// Writes down the entries that a reader hands over, each with all its items.
class EntryRecorder final : public PiaEntryTaker {
public:
    using PiaEntryTaker::PiaEntryTaker;
    void take(const PiaBlock& entry) override;

    /// The entries as text, in order, with their lines.
    std::string text;
};

/// The bytes of a sound version-2 file around any body text.
std::string fileAround(std::string_view body, PiaKind kind = PiaKind::Ctb);

/// The inflated body of a file, or an empty text when it has none. Compressed bytes are never
/// compared: two versions of zlib need not agree on them.
std::string bodyOf(std::string_view file);

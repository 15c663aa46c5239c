// Body text in, body text out, and in again: equal unless the writer warned. The fast way through
// plain bodies must find what the careful way finds, and so must reading a list entry by entry.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>
#include "fuzz/counted_memory.h"
#include "fuzz/oracle.h"
#include "fuzz/sound_file.h"
#include "inspect/rewriting.h"
#include "tests/support/trees.h"

namespace {

/// A line in front that is not ASCII makes the reader take the careful way.
constexpr std::string_view carefulLine = "\xC3\xA9=\"\n";

/// The lines that the items have below such a line.
std::vector<std::uint32_t> linesBelow(const PiaBlock& root) {
    std::vector<std::uint32_t> lines{1};
    for (const std::uint32_t line : linesOf(root)) {
        lines.push_back(line + 1);
    }
    return lines;
}

void requireSameWithCare(std::string_view text, const PiaInput& plain) {
    PiaInput careful;
    const bool done = careful.openBody(std::string(carefulLine).append(text));
    const std::optional<PiaFinding>& failure = plain.report().failure();
    require(done != failure.has_value());
    require(done ? std::string(carefulLine).append(piaBodyText(*plain.root())) ==
                           piaBodyText(*careful.root()) &&
                       linesBelow(*plain.root()) == linesOf(*careful.root()) &&
                       plain.report().warningCount() == careful.report().warningCount()
                 : failure->code == careful.report().failure()->code &&
                       failure->path == careful.report().failure()->path &&
                       *failure->line + 1 == careful.report().failure()->line);
}

/// Entries of the list "l" that are handed over while reading are those of the tree.
void requireSameEntries(std::string_view text, const PiaInput& whole) {
    EntryRecorder whileReading(L"l");
    PiaInput input;
    require(whileReading.openBody(input, text) == (whole.root() != nullptr));
    if (whole.root() == nullptr) {
        return;
    }
    EntryRecorder afterwards(L"l");
    afterwards.takeAll(*whole.root());
    require(whileReading.text == afterwards.text &&
            input.report().warningCount() == whole.report().warningCount());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    PiaInput first;
    bool read = false;
    {
        // The shortest line has four bytes.
        const BoundedMemory bounded(size, 120, 0.5);
        read = first.openBody(text);
    }
    require(read == (first.root() != nullptr) && read != first.report().failure().has_value());
    if (ut::isAscii(text)) {
        requireSameWithCare(text, first);
    }
    if (text.starts_with("l{") || text.find("\nl{") != std::string_view::npos) {
        requireSameEntries(text, first);
    }
    if (!read) {
        return 0;
    }
    std::string body;
    PiaReport report;
    // No line that was read holds a line feed.
    require(piaWriteBody(*first.root(), body, report));
    // Who is sure without making the body must be right.
    require(!platen::surelyReadsBack(first) || report.warningCount() == 0);
    PiaInput second;
    require((second.openBody(body) && equalTrees(*first.root(), *second.root())) ||
            report.warningCount() > 0);
    return 0;
}

// A whole file into a plot style table and out again. Compressed bytes are hard to mutate into
// sense, so that the input is also taken as the body of a sound file.

#include <cstdint>
#include <cstdlib>
#include <optional>

#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "tests/support/trees.h"

namespace {

/// The file of a table; empty when the writer warned that it will not read back.
std::optional<std::string> fileOf(const CPlotStyleTable& table) {
    PiaTree tree;
    PiaFileOut out;
    ut::ByteBuffer file;
    if (!table.writeToBlock(tree.root()) || !out.encode(tree.root(), file)) {
        std::abort();
    }
    if (out.report().warningCount() > 0) {
        return std::nullopt;
    }
    return std::string(file.view());
}

/// Writing rounds numbers to six decimals and names the styles of colours, so that the second
/// writing must give the body of the first, not the body that came in.
void roundTrip(PiaInput& input) {
    CPlotStyleTable table;
    if (!table.init(input)) {
        if (!input.report().failure()) {
            std::abort();
        }
        return;
    }
    std::optional<std::string> file = fileOf(table);
    // Colours mapped by order only may share a style by name once they are written.
    const bool mappedByOrder = table.hasACI() && !table.useACI();
    for (int generation = mappedByOrder ? 0 : 1; file && generation < 2; ++generation) {
        PiaInput again;
        CPlotStyleTable copy;
        if (!again.openBytes(*file) || !copy.init(again)) {
            std::abort();
        }
        const std::optional<std::string> next = fileOf(copy);
        if (generation == 1 && (!next || bodyOf(*next) != bodyOf(*file))) {
            std::abort();
        }
        file = next;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    PiaInput whole;
    if (whole.openBytes(bytes)) {
        roundTrip(whole);
    }
    PiaInput wrapped;
    if (wrapped.openBytes(fileAround(bytes))) {
        roundTrip(wrapped);
    }
    return 0;
}

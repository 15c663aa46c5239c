// A whole file into a plot style table and out again.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <platen/plotstyle.h>
#include "fuzz/document_round_trip.h"

namespace {

std::unique_ptr<CPlotStyleTable> readTable(PiaInput& input) {
    auto table = std::make_unique<CPlotStyleTable>();
    if (!table->init(input)) {
        return nullptr;
    }
    if (table->hasACI() && !table->useACI()) {
        // Colours mapped by order only may share a style by name once they are written.
        const std::optional<std::string> file = fileOf(*table);
        PiaInput written;
        return !file ? std::move(table) : written.openBytes(*file) ? readTable(written) : nullptr;
    }
    return table;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    roundTripBytes({reinterpret_cast<const char*>(data), size}, readTable);
    return 0;
}

// Body text into a plot style table and out again; from a file, styles are read without a tree.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <platen/inspect.h>
#include <platen/plotstyle.h>
#include "fuzz/document_round_trip.h"
#include "tests/support/files.h"

namespace {

std::unique_ptr<CPlotStyleTable> readTable(PiaInput& input) {
    auto table = std::make_unique<CPlotStyleTable>();
    if (!table->init(input)) {
        return nullptr;
    }
    if (table->hasACI() && !table->useACI()) {
        // Colours mapped by order only may share a style by name once they are written.
        const std::optional<std::string> body = bodyWritten(*table);
        PiaInput written;
        return !body ? std::move(table) : written.openBody(*body) ? readTable(written) : nullptr;
    }
    return table;
}

void requireSameFromFile(std::string_view body) {
    static const TemporaryFolder folder;
    static const std::wstring path = folder.wide("table");
    writeBytes(folder.path("table"), storedFile(body));
    PiaReport report;
    const std::unique_ptr<CPlotStyleTable> fromFile(CPlotStyleTable::read(path.c_str(), &report));
    PiaInput input;
    CPlotStyleTable fromTree;
    const bool opened = input.openBytes(storedFile(body));
    const bool read = opened && fromTree.init(input);
    require(read == (fromFile != nullptr));
    if (read) {
        require(bodyWritten(*fromFile) == bodyWritten(fromTree));
    } else {
        require(report.failure()->code == input.report().failure()->code);
        require(report.failure()->path == input.report().failure()->path);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view body(reinterpret_cast<const char*>(data), size);
    roundTripBody(body, readTable);
    if (chosen(body, 64)) {
        requireSameFromFile(body);
        // What the check calls usable is.
        const platen::CheckResult checked = platen::checkBytes(storedFile(body));
        PiaInput input;
        const bool opened = input.openBody(body);
        require(opened || checked.verdict == platen::Verdict::Errors);
        require(!opened || !platen::recognise(input).rejected ||
                checked.verdict == platen::Verdict::Errors);
    }
    return 0;
}

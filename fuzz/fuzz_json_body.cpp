// A JSON body in, JSON and line text out, and in again: equal unless the writer warned.

#include <cstdint>

#include <platen/utcore.h>
#include "fuzz/counted_memory.h"
#include "fuzz/oracle.h"
#include "pia/json_reader.h"
#include "tests/support/trees.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    PiaTree tree;
    PiaReport reading;
    if (!ut::isUtf8(text)) {
        return 0;
    }
    bool read = false;
    {
        const BoundedMemory bounded(size, 120, 1.0);
        read = piaReadJson(text, {}, tree, reading);
    }
    require(read != reading.failure().has_value());
    if (!read) {
        return 0;
    }
    // JSON members are sorted, line text keeps the order that it was given: both hold here.
    const auto requireEqual = [&](const PiaReport& writing, const auto& open) {
        PiaInput again;
        require(writing.warningCount() > 0 ||
                (open(again) && equalTrees(tree.root(), *again.root())));
    };
    std::string json;
    PiaReport writing;
    require(piaWriteJson(tree.root(), json, writing) && json.size() >= 16 && json[15] != '2');
    requireEqual(writing, [&](PiaInput& again) { return again.openBytes(json); });
    std::string body;
    PiaReport writingLines;
    if (piaWriteBody(tree.root(), body, writingLines)) {
        requireEqual(writingLines, [&](PiaInput& again) { return again.openBody(body); });
    }
    return 0;
}

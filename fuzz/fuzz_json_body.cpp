// A JSON body in, JSON and line text out, and in again: equal unless the writer warned.

#include <cstdint>
#include <cstdlib>

#include <platen/utcore.h>
#include "pia/json_reader.h"
#include "tests/support/trees.h"

namespace {

/// JSON members are sorted, line text keeps the order that it was given: both hold here.
void requireEqual(const PiaBlock& root, PiaInput& again, bool readAgain) {
    if (!readAgain || !equalTrees(root, *again.root())) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    PiaTree tree;
    PiaReport reading;
    if (!ut::isUtf8(text) || !piaReadJson(text, {}, tree, reading)) {
        return 0;
    }
    std::string json;
    PiaReport writing;
    if (!piaWriteJson(tree.root(), json, writing) || json.size() < 16 || json[15] == '2') {
        std::abort();
    }
    if (writing.warningCount() == 0) {
        PiaInput again;
        requireEqual(tree.root(), again, again.openBytes(json));
    }
    std::string body;
    PiaReport writingLines;
    if (piaWriteBody(tree.root(), body, writingLines) && writingLines.warningCount() == 0) {
        PiaInput again;
        requireEqual(tree.root(), again, again.openBody(body));
    }
    return 0;
}

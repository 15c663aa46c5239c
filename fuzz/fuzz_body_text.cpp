// Body text in, body text out, and in again: equal unless the writer warned.

#include <cstdint>
#include <cstdlib>

#include "pia/body_writer.h"
#include "tests/support/trees.h"
#include "utcore.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    PiaInput first;
    if (!first.openBody(text)) {
        if (!first.report().failure() || first.root() != nullptr) {
            std::abort();
        }
        return 0;
    }
    std::string body;
    PiaReport report;
    if (!piaWriteBody(*first.root(), body, report)) {
        std::abort();  // No line that was read holds a line feed.
    }
    PiaInput second;
    const bool readAgain = second.openBody(body);
    if (report.warningCount() == 0 &&
        (!readAgain || !equalTrees(*first.root(), *second.root()))) {
        std::abort();
    }
    return 0;
}

// A damaged file, or a damaged body in a sound container, into a file that passes the check.
//
// Slow: a repair packs what it made and checks it, and what is damaged is read line by line.

#include <cstdint>
#include <string_view>

#include <platen/edit.h>
#include <platen/inspect.h>
#include "fuzz/oracle.h"
#include "fuzz/sound_file.h"

namespace {

void repairIt(std::string_view damaged) {
    const platen::RepairResult result = platen::repair(damaged);
    require(static_cast<bool>(result) != result.bytes.empty());
    if (!result) {
        require(!result.reason.empty());
        return;
    }
    require(result.check.verdict != platen::Verdict::Errors);
    // Indentation and encoding are guessed by all lines, so that what was mended may look different
    // once more; a file stays usable. Body text alone may look like anything.
    require(result.form == platen::FileForm::BodyText || !chosen(damaged, 4) ||
            static_cast<bool>(platen::repair(result.bytes)));
    for (const platen::Assumption& assumption : result.assumptions) {
        require(!platen::describe(assumption).empty());
    }
    require(!chosen(damaged, 8) || platen::repair(damaged, {.safeOnly = true}).losses.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.starts_with("PIAFILE") || chosen(bytes, 2)) {
        repairIt(bytes);
    } else {
        repairIt(storedFile(bytes, static_cast<PiaKind>(size % 3)));
    }
    return 0;
}

#include "tools/platen/files/losses.h"

#include <algorithm>
#include <cstddef>

#include <platen/inspect.h>
#include <platen/utcore.h>

namespace cli::files {

std::vector<std::wstring> lostWith(const std::string& file, const PiaBlock& replacement) {
    PiaInput before;
    if (!before.open(ut::decodePath(file).c_str())) {
        return {};
    }
    return platen::droppedItems(*before.root(), replacement);
}

ExitCode warnOfLosses(const std::vector<std::wstring>& lost, const std::string& file,
                      const Console& console) {
    if (lost.empty()) {
        return ExitCode::Ok;
    }
    constexpr std::size_t shown = 20;
    std::string reason = "items of the old file are not in the new one:";
    for (std::size_t index = 0; index < std::min(lost.size(), shown); ++index) {
        reason += (index == 0 ? " " : ", ") + ut::encodeUtf8(lost[index]);
    }
    if (lost.size() > shown) {
        const bool more = lost.size() >= platen::mostDroppedItems;
        reason += " and " + std::string(more ? "at least " : "") +
                  std::to_string(lost.size() - shown) + " more";
    }
    return warn(console, file, reason);
}

}  // namespace cli::files

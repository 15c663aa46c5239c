#include "inspect/lost_rules.h"

#include <cstdint>
#include <optional>

namespace platen {

void addLost(const std::vector<LostItem>& lost, FindingList& findings) {
    for (const LostItem& item : lost) {
        const bool carried = item.reason == LostItem::Reason::Unreadable;
        findings.warn(
            {.code = carried ? PiaCode::ValueNotRead : PiaCode::ItemNotCarried,
             .line = item.line == 0 ? std::nullopt : std::optional<std::uint64_t>(item.line),
             .path = item.path,
             .found = item.found});
    }
}

}  // namespace platen

#include "inspect/lost_rules.h"

namespace platen {

void addLost(const std::vector<LostItem>& lost, FindingList& findings) {
    for (const LostItem& item : lost) {
        const bool carried = item.reason == LostItem::Reason::Unreadable;
        findings.warn({.code = carried ? PiaCode::ValueNotRead : PiaCode::ItemNotCarried,
                       .path = item.path,
                       .found = item.found});
    }
}

}  // namespace platen

#include "tools/platen/lost_rules.h"

namespace platen {
namespace {

constexpr Rule notCarried{"item-not-carried",
                          "the document has no such key, or the key has another type; a program "
                          "that writes the document drops the item",
                          "correct the name or the type, or remove the item"};
constexpr Rule notRead{"value-not-read",
                       "an optional number does not convert, and its usual value is taken",
                       "correct the number, or remove it"};

}  // namespace

void addLost(const std::vector<LostItem>& lost, FindingList& findings) {
    for (const LostItem& item : lost) {
        const bool carried = item.reason == LostItem::Reason::Unreadable;
        findings.add(
            {.rule = carried ? notRead : notCarried, .path = item.path, .found = item.found});
    }
}

}  // namespace platen

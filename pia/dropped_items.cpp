#include "pia/dropped_items.h"

#include <string_view>

namespace {

struct Level {
    const PiaBlock* before;
    const PiaBlock* after;
    std::size_t next;
};

std::wstring pathOf(const std::vector<Level>& levels, std::wstring_view name) {
    std::wstring path;
    for (const Level& level : levels) {
        if (!level.before->name.empty()) {
            path.append(level.before->name.view()).append(1, L'/');
        }
    }
    return path.append(name);
}

}  // namespace

std::vector<std::wstring> piaDroppedItems(const PiaBlock& before, const PiaBlock& after) {
    std::vector<std::wstring> dropped;
    // Blocks on the way to the item that is looked at: no recursion on depth.
    std::vector<Level> levels{{&before, &after, 0}};
    while (!levels.empty() && dropped.size() < piaMaxDroppedItems) {
        Level& level = levels.back();
        if (level.next == level.before->items.size()) {
            levels.pop_back();
            continue;
        }
        const PiaItem* item = level.before->items[level.next++];
        const PiaItem* kept = level.after->findItem(item->name, item->type);
        if (kept == nullptr) {
            dropped.push_back(pathOf(levels, item->name));
        } else if (item->type == PiaItemType::Block) {
            levels.push_back(
                {static_cast<const PiaBlock*>(item), static_cast<const PiaBlock*>(kept), 0});
        }
    }
    return dropped;
}

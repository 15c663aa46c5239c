#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include <platen/inspect.h>
#include <platen/utcore.h>

namespace platen {
namespace {

/// The block of named properties: its entries are numbered anew whenever it is written, and a
/// string "name" tells them apart.
constexpr std::wstring_view propertyList = L"custom";

/// What tells one property from another.
using PropertyKey = std::pair<std::wstring, PiaItemType>;

std::optional<PropertyKey> keyOf(const PiaItem& item) {
    if (item.type != PiaItemType::Block) {
        return std::nullopt;
    }
    const auto& items = static_cast<const PiaBlock&>(item).items;
    if (items.size() != 2 || items[0]->type != PiaItemType::Str ||
        !ut::equalNoCase(items[0]->name, L"name")) {
        return std::nullopt;
    }
    return PropertyKey{static_cast<const PiaStr&>(*items[0]).value, items[1]->type};
}

struct Level {
    const PiaBlock* before;
    const PiaBlock* after;
    std::size_t next;
};

/// The key of an item in the innermost of `levels`, when that is the list of properties.
std::optional<PropertyKey> propertyAt(const std::vector<Level>& levels, const PiaItem& item) {
    constexpr std::size_t propertyLevel = 2;
    const bool isList =
        levels.size() == propertyLevel && levels.back().before->name == propertyList;
    return isList ? keyOf(item) : std::nullopt;
}

/// Finds the items of one tree in another.
class Counterparts {
public:
    explicit Counterparts(const PiaBlock& after) {
        const PiaItem* list = after.findItem(propertyList, PiaItemType::Block);
        if (list == nullptr) {
            return;
        }
        for (const PiaItem* item : static_cast<const PiaBlock*>(list)->items) {
            if (std::optional<PropertyKey> key = keyOf(*item)) {
                properties_.emplace(*std::move(key), item);
            }
        }
    }

    /// What `item` has become: the property of its key or an item in `after`; null for none.
    const PiaItem* of(const PiaItem& item, const std::optional<PropertyKey>& key,
                      const PiaBlock& after) const {
        if (key) {
            const auto found = properties_.find(*key);
            return found == properties_.end() ? nullptr : found->second;
        }
        return after.findItem(item.name, item.type);
    }

private:
    std::map<PropertyKey, const PiaItem*> properties_;
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

std::vector<std::wstring> droppedItems(const PiaBlock& before, const PiaBlock& after) {
    std::vector<std::wstring> dropped;
    const Counterparts counterparts(after);
    // Blocks on the way to the item that is looked at: no recursion on depth.
    std::vector<Level> levels{{&before, &after, 0}};
    while (!levels.empty() && dropped.size() < mostDroppedItems) {
        Level& level = levels.back();
        if (level.next == level.before->items.size()) {
            levels.pop_back();
            continue;
        }
        const PiaItem* item = level.before->items[level.next++];
        const std::optional<PropertyKey> key = propertyAt(levels, *item);
        const PiaItem* kept = counterparts.of(*item, key, *level.after);
        if (kept == nullptr) {
            // A number says little about a property.
            dropped.push_back(pathOf(levels, item->name) + (key ? L" (" + key->first + L")" : L""));
        } else if (item->type == PiaItemType::Block && !key) {
            levels.push_back(
                {static_cast<const PiaBlock*>(item), static_cast<const PiaBlock*>(kept), 0});
        }
    }
    return dropped;
}

}  // namespace platen

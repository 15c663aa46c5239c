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

}  // namespace

std::vector<std::wstring> droppedItems(const PiaBlock& before, const PiaBlock& after) {
    std::vector<std::wstring> dropped;
    const Counterparts counterparts(after);
    // What the blocks on the way to the item have become.
    std::vector<const PiaBlock*> afters{&after};
    for (PiaWalk walk(before); walk.next() && dropped.size() < mostDroppedItems;) {
        if (walk.isEnd()) {
            afters.pop_back();
            continue;
        }
        const PiaItem& item = walk.item();
        const bool isProperty = walk.depth() == 1 && walk.parent().name == propertyList;
        const std::optional<PropertyKey> key = isProperty ? keyOf(item) : std::nullopt;
        const PiaItem* kept = counterparts.of(item, key, *afters.back());
        if (kept == nullptr) {
            // A number says little about a property.
            dropped.push_back(walk.path() + (key ? L" (" + key->first + L")" : L""));
        }
        if (kept == nullptr || key) {
            walk.skip();
        } else if (item.type == PiaItemType::Block) {
            afters.push_back(static_cast<const PiaBlock*>(kept));
        }
    }
    return dropped;
}

}  // namespace platen

#include "tools/platen/item_path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace platen {
namespace {

/// By the number of the type.
constexpr std::array<std::wstring_view, 5> suffixes{L":bin", L":block", L":bool", L":str", L":num"};

std::vector<PiaItem*> childrenNamed(const PiaBlock& block, std::wstring_view name) {
    std::vector<PiaItem*> found;
    std::copy_if(block.items.begin(), block.items.end(), std::back_inserter(found),
                 [&](const PiaItem* item) { return item->name == name; });
    return found;
}

/// Every block of the tree is reached by one beginning of `path` at most, so that this takes no
/// longer than the tree is large and goes no deeper than it is deep.
ItemPlace findLiterally(PiaBlock& block, std::wstring_view path) {
    ItemPlace place{&block, childrenNamed(block, path)};
    std::size_t end = path.rfind(L'/');
    while (place.items.empty() && end != std::wstring_view::npos) {
        PiaItem* inner = block.findItem(path.substr(0, end), PiaItemType::Block);
        if (inner != nullptr) {
            place = findLiterally(static_cast<PiaBlock&>(*inner), path.substr(end + 1));
        }
        end = end == 0 ? std::wstring_view::npos : path.rfind(L'/', end - 1);
    }
    return place;
}

}  // namespace

std::wstring_view typeSuffix(PiaItemType type) { return suffixes[static_cast<std::size_t>(type)]; }

std::optional<PiaItemType> takeTypeSuffix(std::wstring_view& path) {
    for (std::size_t type = 0; type < suffixes.size(); ++type) {
        if (path.ends_with(suffixes[type])) {
            path.remove_suffix(suffixes[type].size());
            return static_cast<PiaItemType>(type);
        }
    }
    return std::nullopt;
}

ItemPlace findPlace(PiaBlock& root, std::wstring_view path) {
    ItemPlace place = findLiterally(root, path);
    if (!place.items.empty()) {
        return place;
    }
    if (const std::optional<PiaItemType> type = takeTypeSuffix(path)) {
        place = findLiterally(root, path);
        std::erase_if(place.items, [&](const PiaItem* item) { return item->type != *type; });
    }
    return place;
}

std::vector<const PiaItem*> findItems(PiaBlock& root, std::wstring_view path) {
    const ItemPlace place = findPlace(root, path);
    return {place.items.begin(), place.items.end()};
}

}  // namespace platen

#include "tools/platen/item_path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace platen {
namespace {

/// By the number of the type.
constexpr std::array<std::wstring_view, 5> suffixes{L":bin", L":block", L":bool", L":str", L":num"};

std::vector<const PiaItem*> childrenNamed(const PiaBlock& block, std::wstring_view name) {
    std::vector<const PiaItem*> found;
    std::copy_if(block.items.begin(), block.items.end(), std::back_inserter(found),
                 [&](const PiaItem* item) { return item->name == name; });
    return found;
}

/// Every block of the tree is reached by one beginning of `path` at most, so that this takes no
/// longer than the tree is large and goes no deeper than it is deep.
std::vector<const PiaItem*> findLiterally(const PiaBlock& block, std::wstring_view path) {
    std::vector<const PiaItem*> found = childrenNamed(block, path);
    std::size_t end = path.rfind(L'/');
    while (found.empty() && end != std::wstring_view::npos) {
        const PiaItem* inner = block.findItem(path.substr(0, end), PiaItemType::Block);
        if (inner != nullptr) {
            found = findLiterally(static_cast<const PiaBlock&>(*inner), path.substr(end + 1));
        }
        end = end == 0 ? std::wstring_view::npos : path.rfind(L'/', end - 1);
    }
    return found;
}

}  // namespace

std::wstring_view typeSuffix(PiaItemType type) { return suffixes[static_cast<std::size_t>(type)]; }

std::vector<const PiaItem*> findItems(const PiaBlock& root, std::wstring_view path) {
    std::vector<const PiaItem*> found = findLiterally(root, path);
    for (std::size_t type = 0; found.empty() && type < suffixes.size(); ++type) {
        if (path.ends_with(suffixes[type])) {
            path.remove_suffix(suffixes[type].size());
            found = findLiterally(root, path);
            std::erase_if(found, [&](const PiaItem* item) {
                return item->type != static_cast<PiaItemType>(type);
            });
            break;
        }
    }
    return found;
}

}  // namespace platen

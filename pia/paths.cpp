#include <platen/pia_paths.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace {

/// By the number of the type.
constexpr std::array<std::wstring_view, 5> suffixes{L":bin", L":block", L":bool", L":str", L":num"};

/// The last "/" of `path` before `end`, or npos.
std::size_t slashBefore(std::wstring_view path, std::size_t end) {
    return end == 0 ? std::wstring_view::npos : path.rfind(L'/', end - 1);
}

std::vector<PiaItem*> childrenNamed(const PiaBlock& block, std::wstring_view name) {
    std::vector<PiaItem*> found;
    std::copy_if(block.items.begin(), block.items.end(), std::back_inserter(found),
                 [&](const PiaItem* item) { return item->name == name; });
    return found;
}

/// Every block of the tree is reached by one beginning of `path` at most, so that this takes no
/// longer than the tree is large.
PiaPlace findLiterally(PiaBlock& root, std::wstring_view path) {
    struct Level {
        PiaBlock* block;
        /// What leads on from the block, and where the next shorter name in it ends.
        std::wstring_view path;
        std::size_t end;
    };
    std::vector<Level> levels;
    PiaPlace place;
    const auto enter = [&](PiaBlock& block, std::wstring_view rest) {
        place = {&block, childrenNamed(block, rest)};
        levels.push_back({&block, rest, slashBefore(rest, rest.size())});
    };
    enter(root, path);
    while (place.items.empty() && !levels.empty()) {
        Level& level = levels.back();
        if (level.end == std::wstring_view::npos) {
            levels.pop_back();
            continue;
        }
        const std::size_t end = level.end;
        level.end = slashBefore(level.path, end);
        if (PiaItem* inner = level.block->findItem(level.path.substr(0, end), PiaItemType::Block)) {
            enter(static_cast<PiaBlock&>(*inner), level.path.substr(end + 1));
        }
    }
    return place;
}

}  // namespace

bool PiaWalk::leave() {
    enters_ = false;
    const bool isInside = levels_.size() > 1;
    if (isInside) {
        levels_.pop_back();
        item_ = parent().items[levels_.back().next - 1];
    }
    return isInside;
}

std::wstring PiaWalk::path() const {
    std::wstring path;
    for (std::size_t depth = 1; depth < levels_.size(); ++depth) {
        path.append(levels_[depth].block->name.view()).append(1, L'/');
    }
    return path.append(item_->name.view());
}

std::wstring_view piaTypeSuffix(PiaItemType type) {
    return suffixes[static_cast<std::size_t>(type)];
}

std::optional<PiaItemType> piaTakeTypeSuffix(std::wstring_view& path) {
    for (std::size_t type = 0; type < suffixes.size(); ++type) {
        if (path.ends_with(suffixes[type])) {
            path.remove_suffix(suffixes[type].size());
            return PiaItemType(static_cast<std::int32_t>(type));
        }
    }
    return std::nullopt;
}

PiaPlace piaFindPlace(PiaBlock& root, std::wstring_view path) {
    PiaPlace place = findLiterally(root, path);
    if (!place.items.empty()) {
        return place;
    }
    if (const std::optional<PiaItemType> type = piaTakeTypeSuffix(path)) {
        place = findLiterally(root, path);
        std::erase_if(place.items, [&](const PiaItem* item) { return item->type != *type; });
    }
    return place;
}

std::vector<const PiaItem*> piaFindItems(const PiaBlock& root, std::wstring_view path) {
    // Nothing is changed, and a place is given to those who change it.
    const PiaPlace place = piaFindPlace(const_cast<PiaBlock&>(root), path);
    return {place.items.begin(), place.items.end()};
}

std::uint32_t piaLineOf(const PiaBlock& root, std::wstring_view path) {
    for (std::size_t end = path.size(); end != std::wstring_view::npos;
         end = slashBefore(path, end)) {
        const std::vector<const PiaItem*> found = piaFindItems(root, path.substr(0, end));
        if (!found.empty()) {
            return found.front()->line();
        }
    }
    return root.line();
}

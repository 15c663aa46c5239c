/// Paths of items.
#pragma once

#include "tools/platen/item_path.h"

namespace platen {

using PiaPlace = ItemPlace;
inline PiaPlace piaFindPlace(PiaBlock& root, std::wstring_view path) {
    return findPlace(root, path);
}
inline std::wstring_view piaTypeSuffix(PiaItemType type) { return typeSuffix(type); }
inline std::optional<PiaItemType> piaTakeTypeSuffix(std::wstring_view& path) {
    return takeTypeSuffix(path);
}

}  // namespace platen

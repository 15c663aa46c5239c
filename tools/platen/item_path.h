/// Naming an item by the way that leads to it.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <platen/pia.h>

namespace platen {

/// The word that stands for an item's type behind the last colon of a path.
std::wstring_view typeSuffix(PiaItemType type);

/// The items that `path` names: names from `root` joined by "/", perhaps followed by ":" and a type
/// word. Names may hold "/" and ":" themselves: the longest name that leads to an item wins, and a
/// type word counts as one only when no item is named with it. All items found have the same name
/// and the same parent; they are in the order of the file.
std::vector<const PiaItem*> findItems(PiaBlock& root, std::wstring_view path);

/// What a path leads to, for those who change it.
struct ItemPlace {
    /// The block that holds the items.
    PiaBlock* parent = nullptr;
    std::vector<PiaItem*> items;
};

/// The same with the block that holds them.
ItemPlace findPlace(PiaBlock& root, std::wstring_view path);

/// The type that the suffix of `path` names, and the suffix taken off; empty when there is none.
std::optional<PiaItemType> takeTypeSuffix(std::wstring_view& path);

}  // namespace platen

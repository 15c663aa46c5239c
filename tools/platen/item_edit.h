/// Changing the items of a raw tree.
#pragma once

#include <string>
#include <string_view>

#include <platen/pia.h>

namespace platen {

/// Changes a tree item by item. The operations return why they could not be done, for people, and
/// change nothing then; an empty text when they were done.
class ItemEditor {
public:
    /// Borrows the tree.
    explicit ItemEditor(PiaBlock& root) : root_(root) {}

    /// Destroys the item that `path` (UTF-8) names.
    std::string remove(std::string_view path);
    /// "PATH=VALUE", UTF-8: gives an item another value, or adds one when PATH ends in ":" and the
    /// type; "PATH:block" adds a block.
    std::string assign(std::string_view assignment);

    /// True once something is different from what it was.
    bool changed() const { return changed_; }

private:
    std::string setValue(PiaItem& item, const std::wstring& value);
    std::string add(std::wstring_view path, const std::wstring* value);
    std::string addTo(PiaBlock& parent, std::wstring_view name, PiaItemType type,
                      const std::wstring& value);

    PiaBlock& root_;
    bool changed_ = false;
};

}  // namespace platen

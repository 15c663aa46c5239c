/// Finds the children of a large block by name and type.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <platen/pia.h>

class PiaNameIndex {
public:
    PiaNameIndex();

    /// Number of items added.
    std::size_t size() const { return used_; }

    /// Adds the item that stands at `position`; its name and type must be new.
    void add(const PiaItem& item, std::size_t position);
    /// The item of that name and type among `items`, or null.
    PiaItem* find(const PiaBlock::Items& items, std::wstring_view name, PiaItemType type) const;

private:
    struct Slot {
        std::uint32_t hash = 0;
        /// Position of the item plus one; 0 for a free slot.
        std::uint32_t place = 0;
    };

    static std::uint32_t hashOf(std::wstring_view name, PiaItemType type);
    void put(Slot slot);

    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};

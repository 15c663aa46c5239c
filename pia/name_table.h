/// The names of one tree while it is read: each distinct name is stored once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>

class PiaNameTable {
public:
    /// Names are stored in `arena`, which must outlive the tree.
    explicit PiaNameTable(PiaArena& arena);

    /// The stored key for an ASCII name.
    PiaKey intern(std::string_view name);
    /// The stored key for any name.
    PiaKey intern(std::wstring_view name);

private:
    struct Slot {
        std::uint64_t hash = 0;
        /// Stored in the arena; its data is null for a free slot.
        std::wstring_view text;
    };

    void grow();
    Slot& freeSlot(std::uint64_t hash);

    PiaArena& arena_;
    std::uint64_t seed_;
    std::vector<Slot> slots_;
    std::size_t used_ = 0;
    /// Holds the narrow form of wide names.
    std::string narrow_;
};

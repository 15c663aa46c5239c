/// Memory for the items and names of one tree: taken piece by piece, given back all at once.
#pragma once

#include <algorithm>
#include <memory_resource>
#include <new>
#include <string_view>
#include <utility>

#include "pia.h"

class PiaArena {
public:
    /// Makes an item that borrows its name. Its memory goes with the arena; its destructor is run
    /// by the block that it is added to.
    template <class Item, class... Args>
    Item* make(PiaKey name, Args&&... args) {
        void* memory = memory_.allocate(sizeof(Item), alignof(Item));
        return new (memory) Item(PiaItem::InArena(), name, std::forward<Args>(args)...);
    }

    PiaBlock* makeBlock(PiaKey name) { return make<PiaBlock>(name, this); }

    /// A key whose text lives as long as the arena. `Char` may be `char` for ASCII.
    template <class Char>
    PiaKey copyName(std::basic_string_view<Char> text) {
        auto* copy = static_cast<wchar_t*>(
            memory_.allocate((text.size() + 1) * sizeof(wchar_t), alignof(wchar_t)));
        std::copy(text.begin(), text.end(), copy);
        copy[text.size()] = L'\0';
        return PiaKey(std::wstring_view(copy, text.size()));
    }

    /// A key for text that an arena holds.
    static PiaKey keyOf(std::wstring_view stored) { return PiaKey(stored); }

private:
    static constexpr std::size_t firstPiece = 16384;

    std::pmr::monotonic_buffer_resource memory_{firstPiece, std::pmr::new_delete_resource()};
};

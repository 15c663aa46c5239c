/// Memory for the items and names of one tree: taken piece by piece, given back all at once.
#pragma once

#include <algorithm>
#include <memory_resource>
#include <string_view>
#include <utility>

#include <platen/pia.h>
#include "pia/access.h"

class PiaArena {
public:
    /// Makes an item that borrows its name. Its memory goes with the arena; its destructor is run
    /// by the block that it is added to.
    template <class Item, class... Args>
    Item* make(PiaKey name, Args&&... args) {
        return PiaAccess::makeAt<Item>(memory_.allocate(sizeof(Item), alignof(Item)), name,
                                       std::forward<Args>(args)...);
    }

    /// Makes an item whose value lies in the arena, or outlives it.
    template <class Item>
    Item* makeBorrowing(PiaKey name, std::string_view ascii) {
        return make<Item>(name, PiaAccess::borrowing(ascii));
    }
    /// Makes an item whose value is copied into the arena.
    template <class Item, class Char>
    Item* makeCopying(PiaKey name, std::basic_string_view<Char> text) {
        if constexpr (sizeof(Char) == 1) {
            return makeBorrowing<Item>(name, copy(text));
        } else if (isAscii(text)) {
            return makeBorrowing<Item>(name, copyAs<char>(text));
        } else {
            return make<Item>(name, PiaAccess::borrowing(copy(text)));
        }
    }

    PiaBlock* makeBlock(PiaKey name) { return make<PiaBlock>(name, this); }

    /// A key whose text lives as long as the arena. `Char` may be `char` for ASCII.
    template <class Char>
    PiaKey copyName(std::basic_string_view<Char> text) {
        return PiaAccess::key(copyAs<wchar_t>(text));
    }

    /// Room for a list of `count` children.
    PiaItem** makeList(std::size_t count) {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): the list is one of pointers.
        const std::size_t bytes = count * sizeof(PiaItem*);
        return static_cast<PiaItem**>(memory_.allocate(bytes, alignof(PiaItem*)));
    }

private:
    static constexpr std::size_t firstPiece = 16384;

    static bool isAscii(std::wstring_view text) {
        return std::all_of(text.begin(), text.end(),
                           [](wchar_t character) { return character < L'\x80'; });
    }

    /// A copy that ends with a NUL.
    template <class To, class From>
    std::basic_string_view<To> copyAs(std::basic_string_view<From> text) {
        auto* characters =
            static_cast<To*>(memory_.allocate((text.size() + 1) * sizeof(To), alignof(To)));
        std::transform(text.begin(), text.end(), characters,
                       [](From character) { return static_cast<To>(character); });
        characters[text.size()] = To();
        return {characters, text.size()};
    }

    template <class Char>
    std::basic_string_view<Char> copy(std::basic_string_view<Char> text) {
        return copyAs<Char>(text);
    }

    std::pmr::monotonic_buffer_resource memory_{firstPiece, std::pmr::new_delete_resource()};
};

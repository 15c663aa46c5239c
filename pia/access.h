/// What the readers, writers and the arena may do with items beyond what callers may.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include <platen/pia.h>
#include "pia/name_index.h"

struct PiaAccess {
    // --- Texts ---

    /// A key for text that lives as long as all items that are named by it.
    static PiaKey key(std::wstring_view stored) { return PiaKey(stored); }

    /// Values that borrow what outlives them. Wide text ends with a NUL.
    static PiaText borrowing(std::string_view ascii) {
        return {ascii.data(), ascii.size(), PiaText::Form::Ascii};
    }
    static PiaText borrowing(std::wstring_view wide) {
        return {wide.data(), wide.size(), PiaText::Form::Wide};
    }
    static void borrow(PiaText& text, std::string_view ascii) {
        release(text);
        text.characters_ = ascii.data();
        text.lengthAndForm_ = PiaText::packed(ascii.size(), PiaText::Form::Ascii);
    }
    /// Frees what the text owns; it must not be read any more.
    static void release(PiaText& text) {
        if (text.form() == PiaText::Form::Owned) {
            text.free();
        }
    }

    /// Calls `reader` with the text as a `std::string_view` of ASCII or a `std::wstring_view`: as
    /// it lies, which is cheaper than to make it wide.
    template <class Reader>
    static decltype(auto) read(const PiaText& text, Reader reader) {
        return text.form() == PiaText::Form::Ascii ? reader(asciiView(text))
                                                   : reader(wideView(text));
    }
    static void copy(const PiaText& text, std::wstring& out) {
        // The string would make a temporary one of characters of another width.
        read(text, [&](auto characters) {
            out.resize(characters.size());
            std::copy(characters.begin(), characters.end(), out.begin());
        });
    }

    // --- Items ---

    template <class Item, class... Arguments>
    static Item* makeAt(void* memory, PiaKey name, Arguments&&... arguments) {
        return new (memory) Item(PiaItem::InArena(), name, std::forward<Arguments>(arguments)...);
    }
    static void setLine(PiaItem& item, std::uint64_t line) {
        item.line_ = static_cast<std::uint32_t>(line);
    }
    /// Destroys an item without its memory when that is an arena's.
    static void destroy(PiaItem* item);

    // --- Blocks ---

    /// Appends an item that is known to be new.
    static void append(PiaBlock& block, PiaItem* item) {
        PiaBlock::Items& items = block.items;
        if (items.size_ == items.capacity_) {
            grow(block);
        }
        items.items_[items.size_++] = item;
        if (block.index_) {
            addToIndex(block);
        }
    }
    /// `addItem` that destroys what it refuses.
    static bool adopt(PiaBlock& block, PiaItem* item) {
        const bool added = block.addItem(item);
        if (!added) {
            destroy(item);
        }
        return added;
    }
    /// Destroys the children.
    static void clear(PiaBlock& block);
    /// Puts the last child before the one at `position`.
    static void moveLast(PiaBlock& block, std::size_t position);

    /// Takes a list of items that another block gave back, to be filled anew from the first.
    static void takeList(PiaBlock& block, const PiaBlock::Items& list) {
        block.items = list;
        block.items.size_ = 0;
    }
    /// Gives the list back and forgets the items. Only blocks among them are destroyed: `blocks`
    /// says whether there are any.
    static PiaBlock::Items giveList(PiaBlock& block, bool blocks);
    /// The items that stood behind the last one in the block that gave the list back.
    static PiaItem* const* itemsToRefill(const PiaBlock& block) { return block.items.end(); }
    /// Counts the next ones as items again.
    static void refilled(PiaBlock& block, std::size_t count) {
        block.items.size_ += static_cast<std::uint32_t>(count);
    }

    static PiaArena& arenaOf(PiaTree& tree) { return *tree.arena_; }
    /// Takes the items that the index does not have yet, making it first.
    static void addToIndex(const PiaBlock& block);

private:
    static std::string_view asciiView(const PiaText& text) {
        return {static_cast<const char*>(text.characters_), text.size()};
    }
    static std::wstring_view wideView(const PiaText& text) {
        return {static_cast<const wchar_t*>(text.characters_), text.size()};
    }
    static void grow(PiaBlock& block);
};

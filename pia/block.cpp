#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

#include <platen/pia_items.h>
#include <platen/pia_paths.h>
#include <platen/utcore.h>
#include "pia/access.h"
#include "pia/arena.h"

namespace {

/// From this many children on, a block that is searched keeps an index.
constexpr std::size_t indexedFrom = 24;
/// Room for this many children is made at the first: most blocks are records of that size.
constexpr std::uint32_t firstChildren = 16;

/// The decimal digits of a number.
class Decimal {
public:
    explicit Decimal(int number)
        : end_(std::to_chars(std::begin(digits_), std::end(digits_), number).ptr) {}
    std::string_view view() const { return {digits_, static_cast<std::size_t>(end_ - digits_)}; }

private:
    char digits_[12]{};
    const char* end_;
};

const PiaNum* numberIn(const PiaBlock& block, std::wstring_view name) {
    return static_cast<const PiaNum*>(block.findItem(name, PiaItemType::Num));
}

PiaKey keyIn(PiaArena&, PiaKey key) { return key; }
PiaKey keyIn(PiaArena& arena, std::wstring_view name) { return arena.copyName(name); }
std::wstring_view textOf(PiaKey key) { return key.text(); }
std::wstring_view textOf(std::wstring_view name) { return name; }

/// Makes an item in the arena, or on the heap when there is none, and adds it.
template <class Item, class Name, class Char>
bool addText(PiaBlock& block, PiaArena* arena, Name name, std::basic_string_view<Char> text) {
    if (arena != nullptr) {
        return PiaAccess::adopt(block, arena->makeCopying<Item>(keyIn(*arena, name), text));
    }
    return PiaAccess::adopt(block, new Item(textOf(name), std::wstring(text.begin(), text.end())));
}

template <class Name>
PiaBlock* addBlockTo(PiaBlock& block, PiaArena* arena, Name name) {
    PiaBlock* child =
        arena != nullptr ? arena->makeBlock(keyIn(*arena, name)) : new PiaBlock(textOf(name));
    return PiaAccess::adopt(block, child) ? child : nullptr;
}

}  // namespace

PiaItem* PiaBlock::Items::at(std::size_t index) const {
    if (index >= size_) {
        // Throws as all of the standard's containers do, or ends a program without exceptions.
        static_cast<void>(std::wstring_view().at(0));
    }
    return items_[index];
}

PiaBlock::PiaBlock(std::wstring_view itemName) : PiaItem(PiaItemType::Block, itemName) {}
PiaBlock::PiaBlock(InArena, PiaKey borrowedName, PiaArena* arena)
    : PiaItem(InArena(), PiaItemType::Block, borrowedName), arena_(arena) {}

void PiaAccess::destroy(PiaItem* item) {
    if (item->name.owned_) {
        delete item;
        return;
    }
    // The memory and the name are the arena's: only what was given to the item later is freed.
    if (item->type == PiaItemType::Block) {
        static_cast<PiaBlock*>(item)->~PiaBlock();
    } else if (item->type != PiaItemType::Bool) {
        release(static_cast<PiaTextItem*>(item)->value);
    }
}

void PiaAccess::clear(PiaBlock& block) {
    if (!block.items.empty()) {
        // A block ends when its children are gone, so that its own destructor has little to do.
        PiaWalk walk(block);
        while (walk.next()) {
            PiaItem* item = &walk.item();
            if (walk.isEnd()) {
                static_cast<PiaBlock*>(item)->items.size_ = 0;
            }
            if (walk.isEnd() || item->type != PiaItemType::Block) {
                destroy(item);
            }
        }
        block.items.size_ = 0;
    }
    block.index_.reset();
}

PiaBlock::~PiaBlock() {
    PiaAccess::clear(*this);
    if (arena_ == nullptr) {
        delete[] items.items_;
    }
}

PiaBlock::Items PiaAccess::giveList(PiaBlock& block, bool blocks) {
    if (blocks) {
        for (PiaItem* item : block.items) {
            if (item->type == PiaItemType::Block) {
                destroy(item);
            }
        }
    }
    block.index_.reset();
    return std::exchange(block.items, {});
}

void PiaAccess::grow(PiaBlock& block) {
    PiaBlock::Items& items = block.items;
    const std::uint32_t capacity = items.capacity_ == 0 ? firstChildren : items.capacity_ * 2;
    PiaItem** list =
        block.arena_ != nullptr ? block.arena_->makeList(capacity) : new PiaItem*[capacity];
    std::copy(items.begin(), items.end(), list);
    if (block.arena_ == nullptr) {
        delete[] items.items_;
    }
    items.items_ = list;
    items.capacity_ = capacity;
}

void PiaAccess::addToIndex(const PiaBlock& block) {
    if (!block.index_) {
        block.index_ = std::make_unique<PiaNameIndex>();
    }
    for (std::size_t position = block.index_->size(); position < block.items.size(); ++position) {
        block.index_->add(*block.items[position], position);
    }
}

PiaItem* PiaBlock::findItem(std::wstring_view itemName, PiaItemType itemType) const {
    if (items.size() >= indexedFrom) {
        PiaAccess::addToIndex(*this);
        return index_->find(items, itemName, itemType);
    }
    const auto* found = std::find_if(items.begin(), items.end(), [&](const PiaItem* item) {
        return item->type == itemType && item->name == itemName;
    });
    return found == items.end() ? nullptr : *found;
}

bool PiaBlock::addItem(PiaItem* item) {
    const bool isNew = findItem(item->name, item->type) == nullptr;
    if (isNew) {
        PiaAccess::append(*this, item);
    }
    return isNew;
}

bool PiaBlock::removeItem(const PiaItem* item) {
    PiaItem** const end = items.items_ + items.size_;
    PiaItem** const found = std::find(items.items_, end, item);
    if (found == end) {
        return false;
    }
    PiaItem* removed = *found;
    std::copy(found + 1, end, found);
    --items.size_;
    index_.reset();
    PiaAccess::destroy(removed);
    return true;
}

void PiaAccess::moveLast(PiaBlock& block, std::size_t position) {
    PiaItem** const end = block.items.items_ + block.items.size_;
    std::rotate(block.items.items_ + position, end - 1, end);
    block.index_.reset();
}

void PiaBlock::sortItems() {
    std::stable_sort(items.items_, items.items_ + items.size_,
                     [](const PiaItem* left, const PiaItem* right) {
                         return ut::compareOrdinal(left->name, right->name) < 0;
                     });
    index_.reset();
}

bool PiaBlock::addString(PiaKey key, std::wstring_view text) {
    return addText<PiaStr>(*this, arena_, key, text);
}
bool PiaBlock::addBin(PiaKey key, std::wstring_view text) {
    return addText<PiaBin>(*this, arena_, key, text);
}
bool PiaBlock::addNumber(PiaKey key, std::wstring_view text) {
    return addText<PiaNum>(*this, arena_, key, text);
}
bool PiaBlock::addBool(PiaKey key, bool flag) {
    return PiaAccess::adopt(*this, arena_ != nullptr ? arena_->make<PiaBool>(key, flag)
                                                     : new PiaBool(key.text(), flag));
}
bool PiaBlock::addInt(PiaKey key, int number) {
    return addText<PiaNum>(*this, arena_, key, Decimal(number).view());
}
bool PiaBlock::addDouble(PiaKey key, double number, int precision) {
    return addText<PiaNum>(*this, arena_, key,
                           std::string_view(ut::formatFixedAscii(number, precision)));
}
PiaBlock* PiaBlock::addBlock(PiaKey key) { return addBlockTo(*this, arena_, key); }

bool PiaBlock::addStringNamed(std::wstring_view itemName, std::wstring_view text) {
    return addText<PiaStr>(*this, arena_, itemName, text);
}
bool PiaBlock::addDoubleNamed(std::wstring_view itemName, double number, int precision) {
    return addText<PiaNum>(*this, arena_, itemName,
                           std::string_view(ut::formatFixedAscii(number, precision)));
}
PiaBlock* PiaBlock::addBlockNamed(std::wstring_view itemName) {
    return addBlockTo(*this, arena_, itemName);
}

bool PiaBlock::getString(std::wstring& out, std::wstring_view itemName) const {
    const auto* item = static_cast<const PiaStr*>(findItem(itemName, PiaItemType::Str));
    if (item == nullptr) {
        return false;
    }
    PiaAccess::copy(item->value, out);
    return true;
}

bool PiaBlock::getDouble(double& out, std::wstring_view itemName) const {
    const PiaNum* item = numberIn(*this, itemName);
    return item != nullptr &&
           PiaAccess::read(item->value, [&](auto text) { return ut::scanDouble(text, out); });
}

bool PiaBlock::getInt(int& out, std::wstring_view itemName) const {
    const PiaNum* item = numberIn(*this, itemName);
    std::int32_t value = 0;
    if (item == nullptr ||
        !PiaAccess::read(item->value, [&](auto text) { return ut::scanInt(text, value); })) {
        return false;
    }
    out = value;
    return true;
}

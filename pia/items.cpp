#include <algorithm>
#include <charconv>
#include <utility>

#include "pia.h"
#include "pia/arena.h"
#include "pia/name_index.h"
#include "utcore.h"

namespace {

/// From this many children on, a block keeps an index.
constexpr std::size_t indexedFrom = 24;
/// Room for this many children is made at the first: most blocks are records of that size.
constexpr std::size_t firstChildren = 16;

std::wstring decimal(int number) {
    char digits[12];
    const char* end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return {static_cast<const char*>(digits), end};
}

/// One of 64 bits for the class that a name and type belong to.
std::uint64_t classOf(std::wstring_view name, PiaItemType type) {
    auto mixed = static_cast<std::uint64_t>(type) + name.size() * 5;
    if (!name.empty()) {
        mixed += static_cast<std::uint64_t>(name.front()) * 3 +
                 static_cast<std::uint64_t>(name.back()) * 11;
    }
    return std::uint64_t{1} << (mixed & 63U);
}

}  // namespace

PiaName::PiaName(std::wstring_view text)
    : length_(static_cast<std::uint32_t>(text.size())), owned_(true) {
    auto* copy = new wchar_t[text.size() + 1];
    std::copy(text.begin(), text.end(), copy);
    copy[text.size()] = L'\0';
    text_ = copy;
}

PiaName::PiaName(PiaKey key)
    : text_(key.c_str()), length_(static_cast<std::uint32_t>(key.text().size())), owned_(false) {}

PiaName::~PiaName() {
    if (owned_) {
        delete[] text_;
    }
}

PiaItem::PiaItem(PiaItemType itemType, std::wstring_view itemName)
    : type(itemType), inArena_(false), name(itemName) {}
PiaItem::PiaItem(InArena, PiaItemType itemType, PiaKey borrowedName)
    : type(itemType), inArena_(true), name(borrowedName) {}
PiaItem::~PiaItem() = default;

PiaBin::PiaBin(std::wstring_view itemName, std::wstring itemValue)
    : PiaItem(PiaItemType::Bin, itemName), value(std::move(itemValue)) {}
PiaBin::PiaBin(InArena, PiaKey borrowedName, std::wstring itemValue)
    : PiaItem(InArena(), PiaItemType::Bin, borrowedName), value(std::move(itemValue)) {}

PiaBool::PiaBool(std::wstring_view itemName, bool itemValue)
    : PiaItem(PiaItemType::Bool, itemName), value(itemValue) {}
PiaBool::PiaBool(InArena, PiaKey borrowedName, bool itemValue)
    : PiaItem(InArena(), PiaItemType::Bool, borrowedName), value(itemValue) {}

PiaStr::PiaStr(std::wstring_view itemName, std::wstring itemValue)
    : PiaItem(PiaItemType::Str, itemName), value(std::move(itemValue)) {}
PiaStr::PiaStr(InArena, PiaKey borrowedName, std::wstring itemValue)
    : PiaItem(InArena(), PiaItemType::Str, borrowedName), value(std::move(itemValue)) {}

PiaNum::PiaNum(std::wstring_view itemName, std::wstring text)
    : PiaItem(PiaItemType::Num, itemName), value(std::move(text)) {}
PiaNum::PiaNum(std::wstring_view itemName, double number, int precision)
    : PiaNum(itemName, ut::formatFixed(number, precision)) {}
PiaNum::PiaNum(std::wstring_view itemName, int number) : PiaNum(itemName, decimal(number)) {}
PiaNum::PiaNum(InArena, PiaKey borrowedName, std::wstring text)
    : PiaItem(InArena(), PiaItemType::Num, borrowedName), value(std::move(text)) {}

PiaBlock::PiaBlock(std::wstring_view itemName) : PiaItem(PiaItemType::Block, itemName) {}
PiaBlock::PiaBlock(InArena, PiaKey borrowedName, PiaArena* arena)
    : PiaItem(InArena(), PiaItemType::Block, borrowedName), arena_(arena) {}

void PiaBlock::destroy(PiaItem* item) {
    if (item->inArena_) {
        item->~PiaItem();
    } else {
        delete item;
    }
}

PiaBlock::~PiaBlock() {
    if (items.empty()) {
        return;
    }
    // Blocks whose children are being destroyed, innermost last: no recursion on depth. A block
    // that is destroyed here has no children left, and its own destructor returns at once.
    struct Level {
        PiaBlock* block;
        std::size_t next;
    };
    std::vector<Level> levels{{this, 0}};
    while (true) {
        Level& level = levels.back();
        auto& children = level.block->items.list_;
        if (level.next < children.size()) {
            PiaItem* child = children[level.next++];
            if (child->type == PiaItemType::Block) {
                levels.push_back({static_cast<PiaBlock*>(child), 0});
            } else {
                destroy(child);
            }
            continue;
        }
        PiaBlock* finished = level.block;
        children.clear();
        levels.pop_back();
        if (levels.empty()) {
            return;
        }
        destroy(finished);
    }
}

PiaItem* PiaBlock::findItem(std::wstring_view itemName, PiaItemType itemType) const {
    const auto matches = [&](const PiaItem& item) {
        return item.type == itemType && item.name == itemName;
    };
    // No two children match, so that the order of looking does not show.
    if (nextLookup_ < items.size() && matches(*items[nextLookup_])) {
        return items[nextLookup_++];
    }
    if ((nameClasses_ & classOf(itemName, itemType)) == 0) {
        return nullptr;
    }
    if (index_) {
        return index_->find(items, itemName, itemType);
    }
    for (std::size_t position = 0; position < items.size(); ++position) {
        if (matches(*items[position])) {
            nextLookup_ = position + 1;
            return items[position];
        }
    }
    return nullptr;
}

bool PiaBlock::addItem(PiaItem* item) {
    const std::uint64_t nameClass = classOf(item->name, item->type);
    if ((nameClasses_ & nameClass) != 0 && findItem(item->name, item->type) != nullptr) {
        return false;
    }
    nameClasses_ |= nameClass;
    if (items.list_.capacity() == 0) {
        items.list_.reserve(firstChildren);
    }
    items.list_.push_back(item);
    if (index_) {
        index_->add(*item, items.size() - 1);
    } else if (items.size() >= indexedFrom) {
        indexItems();
    }
    return true;
}

void PiaBlock::indexItems() {
    index_ = std::make_unique<PiaNameIndex>();
    for (std::size_t position = 0; position < items.size(); ++position) {
        index_->add(*items[position], position);
    }
}

void PiaBlock::sortItems() {
    std::stable_sort(items.list_.begin(), items.list_.end(),
                     [](const PiaItem* left, const PiaItem* right) {
                         return ut::compareOrdinal(left->name, right->name) < 0;
                     });
    nextLookup_ = 0;
    if (index_) {
        indexItems();
    }
}

bool PiaBlock::adopt(PiaItem* item) {
    if (addItem(item)) {
        return true;
    }
    destroy(item);
    return false;
}

template <class Item, class Value>
Item* PiaBlock::make(PiaKey key, Value&& itemValue) {
    if (arena_ != nullptr) {
        return arena_->make<Item>(key, std::forward<Value>(itemValue));
    }
    return new Item(key.text(), std::forward<Value>(itemValue));
}

template <class Item, class Value>
Item* PiaBlock::makeNamed(std::wstring_view itemName, Value&& itemValue) {
    if (arena_ != nullptr) {
        return arena_->make<Item>(arena_->copyName(itemName), std::forward<Value>(itemValue));
    }
    return new Item(itemName, std::forward<Value>(itemValue));
}

bool PiaBlock::addString(PiaKey key, std::wstring_view text) {
    return adopt(make<PiaStr>(key, std::wstring(text)));
}
bool PiaBlock::addBool(PiaKey key, bool flag) { return adopt(make<PiaBool>(key, flag)); }
bool PiaBlock::addBin(PiaKey key, std::wstring_view text) {
    return adopt(make<PiaBin>(key, std::wstring(text)));
}
bool PiaBlock::addInt(PiaKey key, int number) { return adopt(make<PiaNum>(key, decimal(number))); }
bool PiaBlock::addDouble(PiaKey key, double number, int precision) {
    return adopt(make<PiaNum>(key, ut::formatFixed(number, precision)));
}
bool PiaBlock::addStringNamed(std::wstring_view itemName, std::wstring_view text) {
    return adopt(makeNamed<PiaStr>(itemName, std::wstring(text)));
}
bool PiaBlock::addDoubleNamed(std::wstring_view itemName, double number, int precision) {
    return adopt(makeNamed<PiaNum>(itemName, ut::formatFixed(number, precision)));
}

PiaBlock* PiaBlock::addBlock(PiaKey key) {
    PiaBlock* block =
        arena_ != nullptr ? arena_->makeBlock(key) : new PiaBlock(key.text());
    return adopt(block) ? block : nullptr;
}

PiaBlock* PiaBlock::addBlockNamed(std::wstring_view itemName) {
    PiaBlock* block = arena_ != nullptr ? arena_->makeBlock(arena_->copyName(itemName))
                                        : new PiaBlock(itemName);
    return adopt(block) ? block : nullptr;
}

bool PiaBlock::getString(std::wstring& out, std::wstring_view itemName) const {
    const auto* item = static_cast<const PiaStr*>(findItem(itemName, PiaItemType::Str));
    if (item == nullptr) {
        return false;
    }
    out = item->value;
    return true;
}

bool PiaBlock::getDouble(double& out, std::wstring_view itemName) const {
    const auto* item = static_cast<const PiaNum*>(findItem(itemName, PiaItemType::Num));
    return item != nullptr && ut::scanDouble(item->value, out);
}

bool PiaBlock::getInt(int& out, std::wstring_view itemName) const {
    const auto* item = static_cast<const PiaNum*>(findItem(itemName, PiaItemType::Num));
    std::int32_t value = 0;
    if (item == nullptr || !ut::scanInt(item->value, value)) {
        return false;
    }
    out = value;
    return true;
}

PiaTree::PiaTree() : arena_(std::make_unique<PiaArena>()), root_(arena_->makeBlock(L"")) {}

PiaTree::~PiaTree() {
    if (root_ != nullptr) {
        root_->~PiaBlock();
    }
}

PiaTree::PiaTree(PiaTree&& other) noexcept
    : arena_(std::move(other.arena_)), root_(std::exchange(other.root_, nullptr)) {}

PiaTree& PiaTree::operator=(PiaTree&& other) noexcept {
    std::swap(arena_, other.arena_);
    std::swap(root_, other.root_);
    return *this;
}

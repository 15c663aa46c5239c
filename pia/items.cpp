#include <algorithm>
#include <charconv>
#include <string>
#include <utility>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "pia/arena.h"
#include "pia/name_index.h"

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
    char digits_[12];
    const char* end_;
};

std::wstring widen(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

const wchar_t* copyOf(std::wstring_view text) {
    auto* copy = new wchar_t[text.size() + 1];
    std::copy(text.begin(), text.end(), copy);
    copy[text.size()] = L'\0';
    return copy;
}

/// The item itself, when it is one of the wanted type whose value is a text.
const PiaNum* numberIn(const PiaBlock& block, std::wstring_view name) {
    return static_cast<const PiaNum*>(block.findItem(name, PiaItemType::Num));
}

}  // namespace

PiaName::PiaName(std::wstring_view text)
    : text_(copyOf(text)), length_(static_cast<std::uint32_t>(text.size())), owned_(true) {}

PiaName::PiaName(PiaKey key)
    : text_(key.c_str()), length_(static_cast<std::uint32_t>(key.text().size())), owned_(false) {}

PiaName::~PiaName() {
    if (owned_) {
        delete[] text_;
    }
}

PiaText::PiaText(std::wstring_view text) : PiaText(copyOf(text), text.size(), Form::Owned) {}

PiaText::PiaText(PiaText&& other) noexcept
    : characters_(other.characters_), lengthAndForm_(std::exchange(other.lengthAndForm_, 0)) {}

PiaText& PiaText::operator=(std::wstring_view text) {
    const void* copy = copyOf(text);
    release();
    characters_ = copy;
    lengthAndForm_ = (text.size() << formBits) | static_cast<std::size_t>(Form::Owned);
    return *this;
}

void PiaText::free() { delete[] static_cast<const wchar_t*>(characters_); }

std::wstring PiaText::str() const {
    std::wstring text;
    copyTo(text);
    return text;
}

void PiaText::copyTo(std::wstring& text) const {
    // The string would make a temporary one of characters of another width.
    read([&](auto characters) {
        text.resize(characters.size());
        std::copy(characters.begin(), characters.end(), text.begin());
    });
}

bool operator==(const PiaText& left, std::wstring_view right) {
    return left.read([&](auto text) {
        return std::equal(
            text.begin(), text.end(), right.begin(), right.end(),
            [](auto one, wchar_t other) { return static_cast<wchar_t>(one) == other; });
    });
}

bool operator==(const PiaText& left, const PiaText& right) {
    return right.read([&](auto text) {
        if constexpr (std::is_same_v<decltype(text), std::wstring_view>) {
            return left == text;
        } else {
            return left == std::wstring_view(widen(text));
        }
    });
}

PiaItem::PiaItem(PiaItemType itemType, std::wstring_view itemName)
    : type(itemType), inArena_(false), name(itemName) {}
PiaItem::PiaItem(InArena, PiaItemType itemType, PiaKey borrowedName)
    : type(itemType), inArena_(true), name(borrowedName) {}
PiaItem::~PiaItem() = default;

PiaBin::PiaBin(std::wstring_view itemName, std::wstring_view itemValue)
    : PiaItem(PiaItemType::Bin, itemName), value(itemValue) {}
PiaBin::PiaBin(InArena, PiaKey borrowedName, PiaText itemValue)
    : PiaItem(InArena(), PiaItemType::Bin, borrowedName), value(std::move(itemValue)) {}

PiaBool::PiaBool(std::wstring_view itemName, bool itemValue)
    : PiaItem(PiaItemType::Bool, itemName), value(itemValue) {}
PiaBool::PiaBool(InArena, PiaKey borrowedName, bool itemValue)
    : PiaItem(InArena(), PiaItemType::Bool, borrowedName), value(itemValue) {}

PiaStr::PiaStr(std::wstring_view itemName, std::wstring_view itemValue)
    : PiaItem(PiaItemType::Str, itemName), value(itemValue) {}
PiaStr::PiaStr(InArena, PiaKey borrowedName, PiaText itemValue)
    : PiaItem(InArena(), PiaItemType::Str, borrowedName), value(std::move(itemValue)) {}

PiaNum::PiaNum(std::wstring_view itemName, std::wstring_view text)
    : PiaItem(PiaItemType::Num, itemName), value(text) {}
PiaNum::PiaNum(std::wstring_view itemName, double number, int precision)
    : PiaNum(itemName, ut::formatFixed(number, precision)) {}
PiaNum::PiaNum(std::wstring_view itemName, int number)
    : PiaNum(itemName, widen(Decimal(number).view())) {}
PiaNum::PiaNum(InArena, PiaKey borrowedName, PiaText text)
    : PiaItem(InArena(), PiaItemType::Num, borrowedName), value(std::move(text)) {}

PiaBlock::PiaBlock(std::wstring_view itemName) : PiaItem(PiaItemType::Block, itemName) {}
PiaBlock::PiaBlock(InArena, PiaKey borrowedName, PiaArena* arena)
    : PiaItem(InArena(), PiaItemType::Block, borrowedName), arena_(arena) {}

/// One of 64 bits for the class that a name and type belong to.
std::uint64_t PiaBlock::classOf(std::wstring_view itemName, PiaItemType itemType) {
    auto mixed = static_cast<std::uint64_t>(itemType) + itemName.size() * 5;
    if (!itemName.empty()) {
        mixed += static_cast<std::uint64_t>(itemName.front()) * 3 +
                 static_cast<std::uint64_t>(itemName.back()) * 11;
    }
    return std::uint64_t{1} << (mixed & 63U);
}

void PiaBlock::destroy(PiaItem* item) {
    if (!item->inArena_) {
        delete item;
        return;
    }
    // Their memory and their names are the arena's: only what was given to them later is freed.
    switch (item->type) {
        case PiaItemType::Bin:
            static_cast<PiaBin*>(item)->value.release();
            break;
        case PiaItemType::Str:
            static_cast<PiaStr*>(item)->value.release();
            break;
        case PiaItemType::Num:
            static_cast<PiaNum*>(item)->value.release();
            break;
        case PiaItemType::Bool:
            break;
        case PiaItemType::Block:
            static_cast<PiaBlock*>(item)->~PiaBlock();
            break;
    }
}

PiaBlock::~PiaBlock() {
    // Blocks whose children are being destroyed, innermost last: no recursion on depth. A block
    // that is destroyed here has no children left, and its own destructor has little to do.
    struct Level {
        PiaBlock* block;
        std::size_t next;
    };
    std::vector<Level> levels;
    if (!items.empty()) {
        levels.push_back({this, 0});
    }
    while (!levels.empty()) {
        Level& level = levels.back();
        Items& children = level.block->items;
        if (level.next < children.size()) {
            PiaItem* child = children[level.next++];
            if (child->type == PiaItemType::Block &&
                !static_cast<PiaBlock*>(child)->items.empty()) {
                levels.push_back({static_cast<PiaBlock*>(child), 0});
            } else {
                destroy(child);
            }
            continue;
        }
        PiaBlock* finished = level.block;
        children.size_ = 0;
        levels.pop_back();
        if (finished != this) {
            destroy(finished);
        }
    }
    if (arena_ == nullptr) {
        delete[] items.items_;
    }
}

void PiaBlock::takeList(const Items& list) {
    items = list;
    items.size_ = 0;
}

PiaBlock::Items PiaBlock::giveList(bool blocks) {
    if (blocks) {
        for (PiaItem* item : items) {
            if (item->type == PiaItemType::Block) {
                destroy(item);
            }
        }
    }
    nameClasses_ = 0;
    nextLookup_ = 0;
    index_.reset();
    return std::exchange(items, {});
}

void PiaBlock::grow() {
    const std::uint32_t capacity = items.capacity_ == 0 ? firstChildren : items.capacity_ * 2;
    PiaItem** list = arena_ != nullptr ? arena_->makeList(capacity) : new PiaItem*[capacity];
    std::copy(items.begin(), items.end(), list);
    if (arena_ == nullptr) {
        delete[] items.items_;
    }
    items.items_ = list;
    items.capacity_ = capacity;
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
    if (items.size() >= indexedFrom) {
        addToIndex();
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
    append(item, nameClass);
    return true;
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
    nextLookup_ = 0;
    index_.reset();
    destroy(removed);
    return true;
}

/// Takes the items that the index does not have yet, making it first.
void PiaBlock::addToIndex() const {
    if (!index_) {
        index_ = std::make_unique<PiaNameIndex>();
    }
    for (std::size_t position = index_->size(); position < items.size(); ++position) {
        index_->add(*items[position], position);
    }
}

void PiaBlock::sortItems() {
    std::stable_sort(items.items_, items.items_ + items.size_,
                     [](const PiaItem* left, const PiaItem* right) {
                         return ut::compareOrdinal(left->name, right->name) < 0;
                     });
    nextLookup_ = 0;
    index_.reset();
}

bool PiaBlock::adopt(PiaItem* item) {
    if (addItem(item)) {
        return true;
    }
    destroy(item);
    return false;
}

template <class Item>
bool PiaBlock::addText(PiaKey key, std::wstring_view text) {
    if (arena_ != nullptr) {
        return adopt(arena_->makeCopying<Item>(key, text));
    }
    return adopt(new Item(key.text(), text));
}

bool PiaBlock::addAscii(PiaKey key, std::string_view number) {
    if (arena_ != nullptr) {
        return adopt(arena_->makeCopying<PiaNum>(key, number));
    }
    return adopt(new PiaNum(key.text(), widen(number)));
}

bool PiaBlock::addAscii(std::wstring_view itemName, std::string_view number) {
    if (arena_ != nullptr) {
        return adopt(arena_->makeCopying<PiaNum>(arena_->copyName(itemName), number));
    }
    return adopt(new PiaNum(itemName, widen(number)));
}

bool PiaBlock::addString(PiaKey key, std::wstring_view text) { return addText<PiaStr>(key, text); }
bool PiaBlock::addBin(PiaKey key, std::wstring_view text) { return addText<PiaBin>(key, text); }
bool PiaBlock::addNumber(PiaKey key, std::wstring_view text) { return addText<PiaNum>(key, text); }
bool PiaBlock::addBool(PiaKey key, bool flag) {
    if (arena_ != nullptr) {
        return adopt(arena_->make<PiaBool>(key, flag));
    }
    return adopt(new PiaBool(key.text(), flag));
}
bool PiaBlock::addInt(PiaKey key, int number) { return addAscii(key, Decimal(number).view()); }
bool PiaBlock::addDouble(PiaKey key, double number, int precision) {
    return addAscii(key, ut::formatFixedAscii(number, precision));
}
bool PiaBlock::addStringNamed(std::wstring_view itemName, std::wstring_view text) {
    if (arena_ != nullptr) {
        return adopt(arena_->makeCopying<PiaStr>(arena_->copyName(itemName), text));
    }
    return adopt(new PiaStr(itemName, text));
}
bool PiaBlock::addDoubleNamed(std::wstring_view itemName, double number, int precision) {
    return addAscii(itemName, ut::formatFixedAscii(number, precision));
}

PiaBlock* PiaBlock::addBlock(PiaKey key) {
    PiaBlock* block = arena_ != nullptr ? arena_->makeBlock(key) : new PiaBlock(key.text());
    return adopt(block) ? block : nullptr;
}

PiaBlock* PiaBlock::addBlockNamed(std::wstring_view itemName) {
    PiaBlock* block =
        arena_ != nullptr ? arena_->makeBlock(arena_->copyName(itemName)) : new PiaBlock(itemName);
    return adopt(block) ? block : nullptr;
}

bool PiaBlock::getString(std::wstring& out, std::wstring_view itemName) const {
    const auto* item = static_cast<const PiaStr*>(findItem(itemName, PiaItemType::Str));
    if (item == nullptr) {
        return false;
    }
    item->value.copyTo(out);
    return true;
}

bool PiaBlock::getDouble(double& out, std::wstring_view itemName) const {
    const PiaNum* item = numberIn(*this, itemName);
    return item != nullptr &&
           item->value.read([&](auto text) { return ut::scanDouble(text, out); });
}

bool PiaBlock::getInt(int& out, std::wstring_view itemName) const {
    const PiaNum* item = numberIn(*this, itemName);
    std::int32_t value = 0;
    if (item == nullptr || !item->value.read([&](auto text) { return ut::scanInt(text, value); })) {
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

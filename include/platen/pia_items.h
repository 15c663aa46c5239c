/// The items of a plotter file and the blocks that hold them.
///
/// A tree belongs to one thread at a time, even if it is only looked at: values and blocks keep
/// what they learn.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <platen/pia_sink.h>
#include <platen/pia_text.h>
#include <platen/platen_api.h>

class PiaArena;
class PiaNameIndex;

/// The type of an item, by its fixed number: compares with the numbers and converts from them.
class PiaItemType {
public:
    /// The numbers do not change.
    enum Value : std::int32_t { Bin = 0, Block = 1, Bool = 2, Str = 3, Num = 4 };

    // NOLINTBEGIN(google-explicit-constructor): a type is its number.
    constexpr PiaItemType(Value value) : value_(value) {}
    constexpr PiaItemType(std::int32_t number) : value_(static_cast<Value>(number)) {}
    constexpr operator Value() const { return value_; }
    // NOLINTEND(google-explicit-constructor)

private:
    Value value_;
};

/// A named, typed item. Owned by exactly one block; the root is owned by its reader or writer.
class PLATEN_API PiaItem {
public:
    virtual ~PiaItem();
    PiaItem(const PiaItem&) = delete;
    PiaItem& operator=(const PiaItem&) = delete;

    const PiaItemType type;

private:
    /// Stands here to fill a gap.
    std::uint32_t line_ = 0;

public:
    /// That of a root is empty.
    const PiaName name;

    /// The line of the version-2 body that the item was read from, from 1: the first line of a
    /// binary value, the opening brace of a block, 1 for the root. 0 when there is none.
    std::uint32_t line() const { return line_; }

protected:
    friend struct PiaAccess;
    /// Says that the name is borrowed and that the memory is an arena's.
    struct InArena {};

    PiaItem(PiaItemType itemType, std::wstring_view itemName);
    PiaItem(InArena, PiaItemType itemType, PiaKey borrowedName)
        : type(itemType), name(borrowedName) {}
};

/// An item whose value is a text: a `PiaBin`, `PiaStr` or `PiaNum`.
class PLATEN_API PiaTextItem : public PiaItem {
public:
    /// May be changed in place.
    PiaText value;

protected:
    PiaTextItem(PiaItemType itemType, std::wstring_view itemName, std::wstring_view itemValue);
    PiaTextItem(InArena arena, PiaItemType itemType, PiaKey borrowedName, PiaText itemValue)
        : PiaItem(arena, itemType, borrowedName), value(std::move(itemValue)) {}
};

/// A binary value, kept as text (written between backslashes).
class PLATEN_API PiaBin final : public PiaTextItem {
public:
    /// The value is not checked.
    PiaBin(std::wstring_view itemName, std::wstring_view itemValue);

private:
    friend struct PiaAccess;
    PiaBin(InArena arena, PiaKey borrowedName, PiaText itemValue)
        : PiaTextItem(arena, PiaItemType::Bin, borrowedName, std::move(itemValue)) {}
};

class PLATEN_API PiaBool final : public PiaItem {
public:
    PiaBool(std::wstring_view itemName, bool itemValue);
    bool value;  ///< May be changed in place.

private:
    friend struct PiaAccess;
    PiaBool(InArena arena, PiaKey borrowedName, bool itemValue)
        : PiaItem(arena, PiaItemType::Bool, borrowedName), value(itemValue) {}
};

class PLATEN_API PiaStr final : public PiaTextItem {
public:
    PiaStr(std::wstring_view itemName, std::wstring_view itemValue);

private:
    friend struct PiaAccess;
    PiaStr(InArena arena, PiaKey borrowedName, PiaText itemValue)
        : PiaTextItem(arena, PiaItemType::Str, borrowedName, std::move(itemValue)) {}
};

/// A number, kept as the text that was read or will be written.
class PLATEN_API PiaNum final : public PiaTextItem {
public:
    /// The text as it stands; it is not checked.
    PiaNum(std::wstring_view itemName, std::wstring_view text);
    /// Fixed notation with `precision` digits after the point; a negative precision means 6.
    PiaNum(std::wstring_view itemName, double number, int precision);
    /// In decimal.
    template <std::integral Integer>
    PiaNum(std::wstring_view itemName, Integer number)
        : PiaNum(itemName, std::wstring_view(std::to_wstring(+number))) {}
    /// A precision is wanted.
    template <std::floating_point Real>
    PiaNum(std::wstring_view itemName, Real number) = delete;

private:
    friend struct PiaAccess;
    PiaNum(InArena arena, PiaKey borrowedName, PiaText text)
        : PiaTextItem(arena, PiaItemType::Num, borrowedName, std::move(text)) {}
};

/// An ordered list of items in which no two have the same name and the same type.
class PLATEN_API PiaBlock final : public PiaItem, public PiaSink {
public:
    /// The children in order, to be looked at; they change through the block only.
    class Items {
    public:
        using value_type = PiaItem*;
        using const_iterator = PiaItem* const*;
        using const_reverse_iterator = std::reverse_iterator<const_iterator>;

        const_iterator begin() const { return items_; }
        const_iterator end() const { return items_ + size_; }
        const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
        const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }
        std::size_t size() const { return size_; }
        bool empty() const { return size_ == 0; }
        PiaItem* operator[](std::size_t index) const { return items_[index]; }
        /// Throws `std::out_of_range` from the size on.
        PLATEN_API PiaItem* at(std::size_t index) const;
        PiaItem* front() const { return items_[0]; }
        PiaItem* back() const { return items_[size_ - 1]; }

    private:
        friend class PiaBlock;
        friend struct PiaAccess;
        PiaItem** items_ = nullptr;
        std::uint32_t size_ = 0;
        std::uint32_t capacity_ = 0;
    };

    /// Without children.
    explicit PiaBlock(std::wstring_view itemName);
    /// Destroys the children in order, however deep they nest.
    ~PiaBlock() override;

    /// To be looked at; see `addItem` and the rest for changes.
    Items items;

    /// The first child of exactly this name (case-sensitive) and type, or null.
    PiaItem* findItem(std::wstring_view itemName, PiaItemType itemType) const;

    /// Takes `item` to the end of the list. When a child has its name and type already, returns
    /// false and leaves `item` with the caller.
    [[nodiscard]] bool addItem(PiaItem* item);

    /// Destroys a child; false when it is none of this block's. The order of the others stays.
    bool removeItem(const PiaItem* item);

    // The items are made in the arena of the tree, if it has one.
    using PiaSink::addDouble;
    using PiaSink::addString;
    [[nodiscard]] bool addString(PiaKey key, std::wstring_view text) override;
    [[nodiscard]] bool addBool(PiaKey key, bool flag) override;
    [[nodiscard]] bool addBin(PiaKey key, std::wstring_view text) override;
    [[nodiscard]] bool addNumber(PiaKey key, std::wstring_view text) override;
    [[nodiscard]] bool addInt(PiaKey key, int number) override;
    [[nodiscard]] bool addDouble(PiaKey key, double number, int precision = -1) override;
    [[nodiscard]] PiaBlock* addBlock(PiaKey key) override;
    template <PiaRuntimeName Name>
    [[nodiscard]] PiaBlock* addBlock(const Name& itemName) {
        return addBlockNamed(itemName);
    }

    /// Copies the string of that name; false when there is none, and `out` stays.
    [[nodiscard]] bool getString(std::wstring& out, std::wstring_view itemName) const;
    /// Scans the number of that name as "%lf" (see `ut::scanDouble`); false when there is none or
    /// it does not convert, and `out` stays.
    [[nodiscard]] bool getDouble(double& out, std::wstring_view itemName) const;
    /// Scans the number of that name as "%d" (see `ut::scanInt`), likewise.
    [[nodiscard]] bool getInt(int& out, std::wstring_view itemName) const;

    /// Puts the children into the order of a stable sort by name, in UTF-16 units.
    void sortItems();

private:
    friend struct PiaAccess;
    PiaBlock(InArena, PiaKey borrowedName, PiaArena* arena);

    bool addStringNamed(std::wstring_view itemName, std::wstring_view text) override;
    bool addDoubleNamed(std::wstring_view itemName, double number, int precision) override;
    PiaBlock* addBlockNamed(std::wstring_view itemName) override;

    /// Where new children of this block are made; null for the heap.
    PiaArena* arena_ = nullptr;
    /// Exists once a name was looked for in a large block.
    mutable std::unique_ptr<PiaNameIndex> index_;
};

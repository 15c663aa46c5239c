/// The items of a plotter file and the blocks that hold them.
///
/// A tree belongs to one thread at a time.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include <platen/platen_api.h>

class PiaArena;
class PiaNameIndex;

/// The type of an item, by its fixed number.
enum class PiaItemType : std::int32_t { Bin = 0, Block = 1, Bool = 2, Str = 3, Num = 4 };

/// A key with static storage: an item named by one refers to its text instead of copying it.
class PiaKey {
public:
    template <std::size_t Size>
    // NOLINTNEXTLINE(google-explicit-constructor): keys are written as plain literals.
    consteval PiaKey(const wchar_t (&literal)[Size]) : text_(literal, Size - 1) {}

    constexpr std::wstring_view text() const { return text_; }
    constexpr const wchar_t* c_str() const { return text_.data(); }

private:
    friend class PiaArena;
    constexpr explicit PiaKey(std::wstring_view text) : text_(text) {}

    std::wstring_view text_;
};

/// Text that names an item at run time; literals are keys.
template <class Text>
concept PiaRuntimeName =
    std::convertible_to<const Text&, std::wstring_view> && !std::is_array_v<Text>;

/// The name of an item: immutable wide text that is usually shared, since names repeat by the
/// thousand. It owns its text, or borrows it from a key or from the tree's arena.
class PLATEN_API PiaName {
public:
    /// Copies `text`.
    explicit PiaName(std::wstring_view text);
    ~PiaName();
    PiaName(const PiaName&) = delete;
    PiaName& operator=(const PiaName&) = delete;

    std::wstring_view view() const { return {text_, length_}; }
    // NOLINTNEXTLINE(google-explicit-constructor): a name reads like the text it is.
    operator std::wstring_view() const { return view(); }
    const wchar_t* c_str() const { return text_; }
    std::size_t size() const { return length_; }
    bool empty() const { return length_ == 0; }
    friend bool operator==(const PiaName& name, std::wstring_view text) {
        return name.view() == text;
    }

private:
    friend class PiaItem;
    /// Borrows the key's text.
    explicit PiaName(PiaKey key);

    const wchar_t* text_;
    std::uint32_t length_;
    bool owned_;
};

/// The text of an item's value: reads as wide text, and is usually borrowed. A reader leaves most
/// values where they are, as ASCII in the body that was read; only what is assigned is owned.
class PLATEN_API PiaText {
public:
    /// Copies `text`.
    explicit PiaText(std::wstring_view text);
    PiaText(PiaText&& other) noexcept;
    PiaText& operator=(PiaText&&) = delete;
    /// Copies `text`, which may be part of this one.
    PiaText& operator=(std::wstring_view text);
    ~PiaText() { release(); }

    std::wstring str() const;
    void copyTo(std::wstring& text) const;
    // NOLINTNEXTLINE(google-explicit-constructor): a value reads like the text it is.
    operator std::wstring() const { return str(); }
    /// Wide characters.
    std::size_t size() const { return lengthAndForm_ >> formBits; }
    bool empty() const { return size() == 0; }

    /// Calls `reader` with the text as a `std::string_view` of ASCII or a `std::wstring_view`.
    template <class Reader>
    decltype(auto) read(Reader reader) const {
        return form() == Form::Ascii ? reader(asciiView()) : reader(wideView());
    }

    PLATEN_API friend bool operator==(const PiaText& left, std::wstring_view right);
    PLATEN_API friend bool operator==(const PiaText& left, const PiaText& right);

private:
    friend class PiaArena;
    friend class PiaBlock;
    friend class PiaBodyReader;
    enum class Form : std::size_t { Ascii, Wide, Owned };
    static constexpr unsigned formBits = 2;

    PiaText(const void* characters, std::size_t length, Form form)
        : characters_(characters),
          lengthAndForm_((length << formBits) | static_cast<std::size_t>(form)) {}
    /// These borrow what outlives the text.
    explicit PiaText(std::string_view ascii) : PiaText(ascii.data(), ascii.size(), Form::Ascii) {}
    struct Borrow {};
    PiaText(Borrow, std::wstring_view wide) : PiaText(wide.data(), wide.size(), Form::Wide) {}

    Form form() const {
        return static_cast<Form>(lengthAndForm_ & ((std::size_t{1} << formBits) - 1));
    }
    std::string_view asciiView() const { return {static_cast<const char*>(characters_), size()}; }
    std::wstring_view wideView() const {
        return {static_cast<const wchar_t*>(characters_), size()};
    }
    void release() {
        if (form() == Form::Owned) {
            free();
        }
    }
    void free();
    /// Borrows other text; what is owned must not be replaced by it.
    void borrow(std::string_view ascii) {
        characters_ = ascii.data();
        lengthAndForm_ = (ascii.size() << formBits) | static_cast<std::size_t>(Form::Ascii);
    }

    const void* characters_;
    std::size_t lengthAndForm_;
};

/// A named, typed item. Owned by exactly one block; the root is owned by its reader or writer.
class PLATEN_API PiaItem {
public:
    virtual ~PiaItem();
    PiaItem(const PiaItem&) = delete;
    PiaItem& operator=(const PiaItem&) = delete;

    const PiaItemType type;

private:
    friend class PiaBlock;
    /// True when the memory is the arena's; stands here to fill a gap.
    const bool inArena_;

public:
    const PiaName name;

protected:
    friend class PiaArena;
    /// Says that an item is made by an arena: the name is borrowed and the memory is the arena's.
    struct InArena {};

    PiaItem(PiaItemType itemType, std::wstring_view itemName);
    PiaItem(InArena, PiaItemType itemType, PiaKey borrowedName);
};

/// A binary value, kept as text (written between backslashes).
class PLATEN_API PiaBin final : public PiaItem {
public:
    PiaBin(std::wstring_view itemName, std::wstring_view itemValue);
    PiaText value;

private:
    friend class PiaArena;
    PiaBin(InArena, PiaKey borrowedName, PiaText itemValue);
};

class PLATEN_API PiaBool final : public PiaItem {
public:
    PiaBool(std::wstring_view itemName, bool itemValue);
    bool value;

private:
    friend class PiaArena;
    PiaBool(InArena, PiaKey borrowedName, bool itemValue);
};

class PLATEN_API PiaStr final : public PiaItem {
public:
    PiaStr(std::wstring_view itemName, std::wstring_view itemValue);
    PiaText value;

private:
    friend class PiaArena;
    PiaStr(InArena, PiaKey borrowedName, PiaText itemValue);
};

/// A number, kept as the text that was read or will be written.
class PLATEN_API PiaNum final : public PiaItem {
public:
    /// The text as it stands; it is not checked.
    PiaNum(std::wstring_view itemName, std::wstring_view text);
    /// Fixed notation with `precision` digits after the point; a negative precision means 6.
    PiaNum(std::wstring_view itemName, double number, int precision);
    PiaNum(std::wstring_view itemName, int number);
    PiaText value;

private:
    friend class PiaArena;
    PiaNum(InArena, PiaKey borrowedName, PiaText text);
};

/// Takes items in written order: a block of a tree, or the body of a file that is being written.
/// Documents write themselves into one. A name that is a key is not copied.
class PLATEN_API PiaSink {
public:
    /// False when the block has an item of that name and type already.
    [[nodiscard]] virtual bool addString(PiaKey key, std::wstring_view text) = 0;
    [[nodiscard]] virtual bool addBool(PiaKey key, bool flag) = 0;
    [[nodiscard]] virtual bool addBin(PiaKey key, std::wstring_view text) = 0;
    /// A number by its text, which is not checked.
    [[nodiscard]] virtual bool addNumber(PiaKey key, std::wstring_view text) = 0;
    [[nodiscard]] virtual bool addInt(PiaKey key, int number) = 0;
    /// Fixed notation with `precision` digits after the point; a negative precision means 6.
    [[nodiscard]] virtual bool addDouble(PiaKey key, double number, int precision = -1) = 0;
    /// Begins a block; null when there is one of that name already. Its items go to the result,
    /// until the next item goes to this sink.
    [[nodiscard]] virtual PiaSink* addBlock(PiaKey key) = 0;

    template <PiaRuntimeName Name>
    [[nodiscard]] bool addString(const Name& itemName, std::wstring_view text) {
        return addStringNamed(itemName, text);
    }
    template <PiaRuntimeName Name>
    [[nodiscard]] bool addDouble(const Name& itemName, double number, int precision = -1) {
        return addDoubleNamed(itemName, number, precision);
    }
    template <PiaRuntimeName Name>
    [[nodiscard]] PiaSink* addBlock(const Name& itemName) {
        return addBlockNamed(itemName);
    }

protected:
    ~PiaSink() = default;

private:
    virtual bool addStringNamed(std::wstring_view itemName, std::wstring_view text) = 0;
    virtual bool addDoubleNamed(std::wstring_view itemName, double number, int precision) = 0;
    virtual PiaSink* addBlockNamed(std::wstring_view itemName) = 0;
};

/// An ordered list of items in which no two have the same name and the same type.
class PLATEN_API PiaBlock final : public PiaItem, public PiaSink {
public:
    /// The children in order, to be looked at; they change through the block only.
    class Items {
    public:
        PiaItem* const* begin() const { return items_; }
        PiaItem* const* end() const { return items_ + size_; }
        std::size_t size() const { return size_; }
        bool empty() const { return size_ == 0; }
        PiaItem* operator[](std::size_t index) const { return items_[index]; }

    private:
        friend class PiaArena;
        friend class PiaBlock;
        PiaItem** items_ = nullptr;
        std::uint32_t size_ = 0;
        std::uint32_t capacity_ = 0;
    };

    explicit PiaBlock(std::wstring_view itemName);
    /// Destroys the children in order, however deep they nest.
    ~PiaBlock() override;

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
    friend class PiaArena;
    friend class PiaBodyReader;
    PiaBlock(InArena, PiaKey borrowedName, PiaArena* arena);

    bool addStringNamed(std::wstring_view itemName, std::wstring_view text) override;
    bool addDoubleNamed(std::wstring_view itemName, double number, int precision) override;
    PiaBlock* addBlockNamed(std::wstring_view itemName) override;
    static void destroy(PiaItem* item);
    static std::uint64_t classOf(std::wstring_view itemName, PiaItemType itemType);
    /// `addItem` that destroys what it refuses.
    bool adopt(PiaItem* item);
    /// Appends an item that is known to be new; `nameClass` is its class.
    void append(PiaItem* item, std::uint64_t nameClass) {
        nameClasses_ |= nameClass;
        if (items.size_ == items.capacity_) {
            grow();
        }
        items.items_[items.size_++] = item;
        if (index_) {
            addToIndex();
        }
    }
    void grow();
    /// Takes a list of items that another block gave back, to be filled anew from the first.
    void takeList(const Items& list);
    /// Gives the list back and forgets the items. Only blocks among them are destroyed: `blocks`
    /// says whether there are any.
    Items giveList(bool blocks);
    /// The items that stood behind the last one in the block that gave the list back.
    PiaItem* const* itemsToRefill() const { return items.end(); }
    /// Counts the next ones as items again.
    void refilled(std::size_t count, std::uint64_t nameClasses) {
        nameClasses_ |= nameClasses;
        items.size_ += static_cast<std::uint32_t>(count);
    }
    void addToIndex() const;
    template <class Item>
    bool addText(PiaKey key, std::wstring_view text);
    bool addAscii(PiaKey key, std::string_view number);
    bool addAscii(std::wstring_view itemName, std::string_view number);

    /// Where new children of this block are made; null for the heap.
    PiaArena* arena_ = nullptr;
    /// One bit for each of 64 classes of names: a clear bit proves that a name is new.
    std::uint64_t nameClasses_ = 0;
    /// Where the next lookup starts: readers ask for keys in the order of the file.
    mutable std::size_t nextLookup_ = 0;
    /// Exists once a name was looked for in a large block.
    mutable std::unique_ptr<PiaNameIndex> index_;
};

/// A tree whose items live in one arena: the fast way to build one for writing. Items that the
/// caller makes with `new` and adds are destroyed with it all the same. The values of a tree that
/// was read may lie in the body that it was read from.
class PLATEN_API PiaTree {
public:
    PiaTree();
    ~PiaTree();
    PiaTree(PiaTree&&) noexcept;
    PiaTree& operator=(PiaTree&&) noexcept;

    /// The root block; its name is empty.
    PiaBlock& root() { return *root_; }
    const PiaBlock& root() const { return *root_; }
    PiaArena& arena() { return *arena_; }

private:
    std::unique_ptr<PiaArena> arena_;
    /// In the arena, which destroys it.
    PiaBlock* root_;
};

/// Texts of the item tree: keys, names and values. All read as a `const std::wstring` does.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <platen/platen_api.h>

struct PiaAccess;
class PiaItem;

/// A key with static storage: an item named by one refers to its text instead of copying it.
class PiaKey {
public:
    template <std::size_t Size>
    // NOLINTNEXTLINE(google-explicit-constructor): keys are written as plain literals.
    consteval PiaKey(const wchar_t (&literal)[Size]) : text_(literal, Size - 1) {}

    /// The text; a NUL follows it.
    ///@{
    constexpr std::wstring_view text() const { return text_; }
    constexpr const wchar_t* c_str() const { return text_.data(); }
    ///@}

private:
    friend struct PiaAccess;
    constexpr explicit PiaKey(std::wstring_view text) : text_(text) {}

    std::wstring_view text_;
};

/// Text that names an item at run time; literals are keys.
template <class Text>
concept PiaRuntimeName =
    std::convertible_to<const Text&, std::wstring_view> && !std::is_array_v<Text>;

template <class Self>
class PiaReadsAsText;
/// Text that is not an item's own.
template <class Text>
concept PiaOtherText = std::convertible_to<const Text&, std::wstring_view> &&
    !std::derived_from<Text, PiaReadsAsText<Text>>;

/// The members of `const std::wstring` for a class that has `view()`, of a text that a NUL follows.
template <class Self>
class PiaReadsAsText {
public:
    /// As of `const std::wstring`.
    ///@{
    using value_type = wchar_t;
    using size_type = std::size_t;
    using const_iterator = const wchar_t*;
    using iterator = const_iterator;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;
    static constexpr std::size_t npos = std::wstring_view::npos;

    // NOLINTNEXTLINE(google-explicit-constructor)
    operator std::wstring_view() const { return text(); }
    // NOLINTNEXTLINE(google-explicit-constructor)
    operator std::wstring() const { return self().str(); }

    const wchar_t* c_str() const { return text().data(); }
    const wchar_t* data() const { return text().data(); }
    std::size_t length() const { return self().size(); }
    bool empty() const { return self().size() == 0; }
    /// The index may be the size, where the NUL stands.
    const wchar_t& operator[](std::size_t index) const { return text().data()[index]; }
    /// Throws `std::out_of_range` from the size on.
    const wchar_t& at(std::size_t index) const { return text().at(index); }
    const wchar_t& front() const { return text().front(); }
    const wchar_t& back() const { return text().back(); }

    const_iterator begin() const { return data(); }
    const_iterator end() const { return data() + length(); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    /// Throws `std::out_of_range` behind the end.
    std::wstring substr(std::size_t from = 0, std::size_t count = npos) const {
        return std::wstring(text().substr(from, count));
    }
    int compare(std::wstring_view other) const { return text().compare(other); }
    int compare(std::size_t from, std::size_t count, std::wstring_view other) const {
        return text().compare(from, count, other);
    }
    bool starts_with(std::wstring_view part) const { return text().starts_with(part); }
    bool starts_with(wchar_t character) const { return text().starts_with(character); }
    bool ends_with(std::wstring_view part) const { return text().ends_with(part); }
    bool ends_with(wchar_t character) const { return text().ends_with(character); }
    std::size_t find(std::wstring_view part, std::size_t from = 0) const {
        return text().find(part, from);
    }
    std::size_t find(wchar_t character, std::size_t from = 0) const {
        return text().find(character, from);
    }
    std::size_t rfind(std::wstring_view part, std::size_t from = npos) const {
        return text().rfind(part, from);
    }
    std::size_t rfind(wchar_t character, std::size_t from = npos) const {
        return text().rfind(character, from);
    }
    std::size_t find_first_of(std::wstring_view characters, std::size_t from = 0) const {
        return text().find_first_of(characters, from);
    }
    std::size_t find_first_of(wchar_t character, std::size_t from = 0) const {
        return text().find_first_of(character, from);
    }
    std::size_t find_last_of(std::wstring_view characters, std::size_t from = npos) const {
        return text().find_last_of(characters, from);
    }
    std::size_t find_last_of(wchar_t character, std::size_t from = npos) const {
        return text().find_last_of(character, from);
    }
    std::size_t find_first_not_of(std::wstring_view characters, std::size_t from = 0) const {
        return text().find_first_not_of(characters, from);
    }
    std::size_t find_first_not_of(wchar_t character, std::size_t from = 0) const {
        return text().find_first_not_of(character, from);
    }
    std::size_t find_last_not_of(std::wstring_view characters, std::size_t from = npos) const {
        return text().find_last_not_of(characters, from);
    }
    std::size_t find_last_not_of(wchar_t character, std::size_t from = npos) const {
        return text().find_last_not_of(character, from);
    }
    ///@}

    // Found only for texts of items, so that nobody else's operators are looked for here.
    template <std::convertible_to<std::wstring_view> Right>
    friend bool operator==(const Self& left, const Right& right) {
        return left.view() == std::wstring_view(right);
    }
    template <std::convertible_to<std::wstring_view> Right>
    friend std::strong_ordering operator<=>(const Self& left, const Right& right) {
        return left.view() <=> std::wstring_view(right);
    }
    template <std::convertible_to<std::wstring_view> Right>
    friend std::wstring operator+(const Self& left, const Right& right) {
        return left.str().append(std::wstring_view(right));
    }
    template <PiaOtherText Left>
    friend std::wstring operator+(const Left& left, const Self& right) {
        return std::wstring(left).append(right.view());
    }
    template <std::same_as<wchar_t> Character>
    friend std::wstring operator+(const Self& left, Character right) {
        return left.str().append(1, right);
    }
    template <std::same_as<wchar_t> Character>
    friend std::wstring operator+(Character left, const Self& right) {
        return std::wstring(1, left).append(right.view());
    }
    friend std::wostream& operator<<(std::wostream& out, const Self& text) {
        return out << text.view();
    }

private:
    const Self& self() const { return static_cast<const Self&>(*this); }
    std::wstring_view text() const { return self().view(); }
};

/// The name of an item: immutable wide text that is usually shared, since names repeat by the
/// thousand. It owns its text, or borrows it from a key or from the tree; a copy owns.
class PLATEN_API PiaName : public PiaReadsAsText<PiaName> {
public:
    /// Copies `text`.
    explicit PiaName(std::wstring_view text);
    PiaName(const PiaName& other) : PiaName(other.view()) {}
    PiaName& operator=(const PiaName&) = delete;
    ~PiaName();

    /// The text, for as long as the name lives.
    std::wstring_view view() const { return {text_, length_}; }
    std::wstring str() const { return std::wstring(view()); }  ///< A copy.
    std::size_t size() const { return length_; }               ///< Wide characters.

private:
    friend class PiaItem;
    friend struct PiaAccess;
    /// Borrows the key's text.
    explicit PiaName(PiaKey key)
        : text_(key.c_str()),
          length_(static_cast<std::uint32_t>(key.text().size())),
          owned_(false) {}

    const wchar_t* text_;
    std::uint32_t length_;
    bool owned_;
};

/// The value of an item that is a text, and can be given another one. A reader leaves most values
/// where they are, as ASCII in the body that was read; the first use that needs wide text, of a
/// const value too, makes it and keeps it for the life of the value. Conversion to `std::wstring`
/// and `size` do without.
class PLATEN_API PiaText : public PiaReadsAsText<PiaText> {
public:
    /// Copies `text`.
    explicit PiaText(std::wstring_view text);
    PiaText(const PiaText& other) : PiaText(other.view()) {}
    PiaText(PiaText&& other) noexcept
        : characters_(other.characters_),
          lengthAndForm_(std::exchange(other.lengthAndForm_, packed(0, Form::Ascii))) {}
    /// These copy a text that may be part of this one.
    PiaText& operator=(std::wstring_view text);
    PiaText& operator=(const PiaText& other);
    PiaText& operator+=(std::wstring_view text) { return *this = str().append(text); }
    PiaText& operator+=(wchar_t character) { return *this += std::wstring_view(&character, 1); }
    void clear() { *this = std::wstring_view(); }  ///< Makes it the empty text.
    ~PiaText() {
        if (form() == Form::Owned) {
            free();
        }
    }

    /// The text, for as long as this one lives and is not changed.
    std::wstring_view view() const;
    std::wstring str() const;  ///< A copy.
    /// Wide characters.
    std::size_t size() const { return lengthAndForm_ >> formBits; }

private:
    friend struct PiaAccess;
    enum class Form : std::size_t { Ascii, Wide, Owned };
    static constexpr unsigned formBits = 2;
    static constexpr std::size_t packed(std::size_t length, Form form) {
        return (length << formBits) | static_cast<std::size_t>(form);
    }

    void free();
    /// Borrows what outlives the text.
    PiaText(const void* characters, std::size_t length, Form form)
        : characters_(characters), lengthAndForm_(packed(length, form)) {}
    Form form() const {
        return static_cast<Form>(lengthAndForm_ & ((std::size_t{1} << formBits) - 1));
    }

    mutable const void* characters_;
    mutable std::size_t lengthAndForm_;
};

template <>
struct std::hash<PiaName> {
    std::size_t operator()(const PiaName& name) const {
        return std::hash<std::wstring_view>()(name.view());
    }
};
template <>
struct std::hash<PiaText> {
    std::size_t operator()(const PiaText& text) const {
        return std::hash<std::wstring_view>()(text.view());
    }
};

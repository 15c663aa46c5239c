/// The drawing SDK's types that Platen calls: a stand-in, no larger than its callers need.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/platen_api.h>

/// Code pages by the SDK's own numbers; only the one that Platen asks for is named.
enum class OdCodePageId : int {
    /// The system's ANSI code page, decoded leniently.
    CP_ANSI = 46,
};

/// The SDK's text type.
class PLATEN_API OdString {
public:
    OdString() = default;  ///< Empty.
    /// A null pointer gives the empty text.
    OdString(const wchar_t* text) : text_(text != nullptr ? text : L"") {}
    explicit OdString(std::wstring text) : text_(std::move(text)) {}

    /// Decodes `bytes`. Never fails and drops nothing: a byte that the code page does not define
    /// becomes the code point of the same number.
    OdString(std::string_view bytes, OdCodePageId codePage);

    /// Borrowed: valid until the text is changed or destroyed.
    ///@{
    const wchar_t* c_str() const { return text_.c_str(); }
    const std::wstring& text() const { return text_; }
    ///@}
    bool isEmpty() const { return text_.empty(); }
    bool operator==(const OdString& other) const = default;
    /// Equality after `ut::toLower` of each character, whatever the locale.
    bool equalsNoCase(const OdString& other) const;

private:
    std::wstring text_;
};

/// The SDK's exception. The codes are the SDK's result codes.
class PLATEN_API OdError {
public:
    /// A result code of the SDK.
    explicit OdError(int code) : code_(code) {}
    int code() const { return code_; }

private:
    int code_;
};

/// An index that is not below the number of elements.
class PLATEN_API OdError_InvalidIndex : public OdError {
public:
    /// Handlers tell this error by its type; the number is this stand-in's own.
    OdError_InvalidIndex() : OdError(10) {}
};

/// Throws `OdError_InvalidIndex`. Where a program is compiled without exceptions it ends.
[[noreturn]] PLATEN_API void odThrowInvalidIndex();

/// The SDK's array. Copies share their elements until one of them is changed.
template <class T>
class OdArray {
public:
    std::size_t size() const { return elements_ ? elements_->size() : 0; }  ///< Number of elements.
    std::size_t length() const { return size(); }                           ///< The same as `size`.
    bool isEmpty() const { return size() == 0; }

    /// Adds an element at the end.
    ///@{
    void append(T element) { own().push_back(std::move(element)); }
    void push_back(T element) { own().push_back(std::move(element)); }
    ///@}
    /// New elements are values of their type.
    void resize(std::size_t size) { own().resize(size); }
    void clear() { elements_.reset(); }  ///< Removes all elements.

    /// Throws `OdError_InvalidIndex`.
    T& operator[](std::size_t index) { return own()[checked(index)]; }
    const T& operator[](std::size_t index) const { return (*elements_)[checked(index)]; }

    /// As many elements as `size` says, which nobody else shares; null for an empty array that
    /// never had any.
    T* asArrayPtr() { return own().data(); }
    /// Null or anything for an empty array.
    const T* asArrayPtr() const { return elements_ ? elements_->data() : nullptr; }

    T* begin() { return asArrayPtr(); }
    T* end() { return asArrayPtr() + size(); }
    const T* begin() const { return asArrayPtr(); }
    const T* end() const { return asArrayPtr() + size(); }

private:
    std::size_t checked(std::size_t index) const {
        if (index >= size()) {
            odThrowInvalidIndex();
        }
        return index;
    }

    /// Elements that nobody shares.
    std::vector<T>& own() {
        if (!elements_) {
            elements_ = std::make_shared<std::vector<T>>();
        } else if (elements_.use_count() > 1) {
            elements_ = std::make_shared<std::vector<T>>(*elements_);
        }
        return *elements_;
    }

    std::shared_ptr<std::vector<T>> elements_;
};

/// The SDK's colour, as far as it is red, green and blue. Black at first.
class PLATEN_API OdCmColor {
public:
    /// From 0 to 255 each.
    void setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        red_ = red;
        green_ = green;
        blue_ = blue;
    }
    std::uint8_t red() const { return red_; }
    std::uint8_t green() const { return green_; }
    std::uint8_t blue() const { return blue_; }
    bool operator==(const OdCmColor& other) const = default;

private:
    std::uint8_t red_ = 0;
    std::uint8_t green_ = 0;
    std::uint8_t blue_ = 0;
};

/// The SDK's plot settings: Platen needs their paper units.
struct OdDbPlotSettings {
    /// As files have them, too.
    enum PlotPaperUnits : std::int32_t { kInches = 0, kMillimeters = 1, kPixels = 2 };
};

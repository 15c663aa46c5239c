/// The drawing SDK's types that Platen calls: a stand-in, no larger than its callers need.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platen_api.h"

/// Code pages by the SDK's own numbers; only the one that Platen asks for is named.
enum class OdCodePageId : int {
    /// The system's ANSI code page, decoded leniently.
    CP_ANSI = 46,
};

/// The SDK's text type.
class PLATEN_API OdString {
public:
    OdString() = default;
    explicit OdString(std::wstring text) : text_(std::move(text)) {}

    /// Decodes `bytes`. Never fails and drops nothing: a byte that the code page does not define
    /// becomes the code point of the same number.
    OdString(std::string_view bytes, OdCodePageId codePage);

    const wchar_t* c_str() const { return text_.c_str(); }
    const std::wstring& text() const { return text_; }
    bool isEmpty() const { return text_.empty(); }

private:
    std::wstring text_;
};

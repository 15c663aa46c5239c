#include <algorithm>

#include <platen/pia_text.h>
#include "pia/access.h"

namespace {

template <class Char>
const wchar_t* copyOf(std::basic_string_view<Char> text) {
    auto* copy = new wchar_t[text.size() + 1];
    std::copy(text.begin(), text.end(), copy);
    copy[text.size()] = L'\0';
    return copy;
}

}  // namespace

PiaName::PiaName(std::wstring_view text)
    : text_(copyOf(text)), length_(static_cast<std::uint32_t>(text.size())), owned_(true) {}

PiaName::~PiaName() {
    if (owned_) {
        delete[] text_;
    }
}

PiaText::PiaText(std::wstring_view text) : PiaText(copyOf(text), text.size(), Form::Owned) {}

void PiaText::free() { delete[] static_cast<const wchar_t*>(characters_); }

PiaText& PiaText::operator=(std::wstring_view text) {
    const void* copy = copyOf(text);
    PiaAccess::release(*this);
    characters_ = copy;
    lengthAndForm_ = packed(text.size(), Form::Owned);
    return *this;
}

PiaText& PiaText::operator=(const PiaText& other) {
    if (this != &other) {
        *this = other.view();
    }
    return *this;
}

std::wstring_view PiaText::view() const {
    if (form() == Form::Ascii) {
        characters_ = copyOf(std::string_view(static_cast<const char*>(characters_), size()));
        lengthAndForm_ = packed(size(), Form::Owned);
    }
    return {static_cast<const wchar_t*>(characters_), size()};
}

std::wstring PiaText::str() const {
    std::wstring text;
    PiaAccess::copy(*this, text);
    return text;
}

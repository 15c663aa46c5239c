#include "platform/utcore/code_page.h"

#include <algorithm>

#include <platen/utcore.h>
#include "platform/utcore/ascii.h"
#include "platform/utcore/utf.h"

namespace ut {

namespace {

std::unique_ptr<CodePage>& current() {
    static std::unique_ptr<CodePage> page = defaultCodePage();
    return page;
}

}  // namespace

CodePage::~CodePage() = default;

std::wstring Utf8CodePage::decode(std::string_view bytes) const {
    return decodeUtf8Lenient(bytes, false);
}

bool Utf8CodePage::encode(char32_t character, std::string& bytes) const {
    if (isSurrogate(character)) {
        return false;
    }
    char sequence[4];
    bytes.append(sequence, writeUtf8(character, sequence));
    return true;
}

SingleByteCodePage::SingleByteCodePage(std::string name, const Characters& characters)
    : CodePage(std::move(name)), characters_(characters) {
    // An undefined byte must not claim a character that another byte is defined as: it comes last
    // among equals, where no search finds it.
    for (const bool sameNumber : {false, true}) {
        for (std::size_t byte = 0; byte < characters_.size(); ++byte) {
            const auto code = static_cast<char32_t>(characters_[byte]);
            if (code >= 0x80 && (code == byte) == sameNumber) {
                bytes_.emplace_back(characters_[byte], static_cast<char>(byte));
            }
        }
    }
    std::stable_sort(bytes_.begin(), bytes_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
}

std::wstring SingleByteCodePage::decode(std::string_view bytes) const {
    std::wstring text(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [this](char byte) { return characters_[static_cast<unsigned char>(byte)]; });
    return text;
}

bool SingleByteCodePage::encode(char32_t character, std::string& bytes) const {
    const auto found = std::lower_bound(bytes_.begin(), bytes_.end(), character,
                                        [](const auto& entry, char32_t value) {
                                            return static_cast<char32_t>(entry.first) < value;
                                        });
    if (found == bytes_.end() || static_cast<char32_t>(found->first) != character) {
        return false;
    }
    bytes += found->second;
    return true;
}

bool setAnsiCodePage(const char* name) {
    if (name == nullptr) {
        return false;
    }
    std::unique_ptr<CodePage> page = openCodePage(name);
    if (page == nullptr) {
        return false;
    }
    current() = std::move(page);
    return true;
}

std::string ansiCodePage() { return current()->name(); }

std::wstring decodeAnsi(std::string_view bytes) {
    if (!isAscii(bytes)) {
        return current()->decode(bytes);
    }
    std::wstring text(bytes.size(), L'\0');
    widenAscii(bytes, text.data());
    return text;
}

std::size_t convertToAnsi(std::wstring_view text, std::string& bytes) {
    std::size_t lost = 0;
    for (;;) {
        const std::size_t plain = asciiLength(text);
        const std::size_t size = bytes.size();
        bytes.resize(size + plain);
        narrowAscii(text.substr(0, plain), bytes.data() + size);
        text.remove_prefix(plain);
        if (text.empty()) {
            return lost;
        }
        const char32_t character = takeCharacter(text);
        if (!current()->encode(character, bytes)) {
            const std::size_t units = utf16Units(character);
            bytes.append(units, '?');
            lost += units;
        }
    }
}

}  // namespace ut

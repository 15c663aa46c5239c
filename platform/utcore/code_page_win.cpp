#include <windows.h>

#include <platen/utcore.h>
#include "platform/utcore/code_page.h"

namespace ut {

namespace {

/// The character of `bytes`, or 0 when they are none.
wchar_t characterOf(UINT codePage, std::string_view bytes) {
    wchar_t units[2];
    const int count = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(),
                                          static_cast<int>(bytes.size()), units, 2);
    return count == 1 ? units[0] : L'\0';
}

/// A page with characters of two bytes.
class DoubleByteCodePage : public CodePage {
public:
    DoubleByteCodePage(std::string name, UINT codePage)
        : CodePage(std::move(name)), codePage_(codePage) {}

    std::wstring decode(std::string_view bytes) const override {
        std::wstring text;
        text.reserve(bytes.size());
        while (!bytes.empty()) {
            const auto first = static_cast<unsigned char>(bytes.front());
            const bool isLead = IsDBCSLeadByteEx(codePage_, first) != FALSE;
            std::size_t length = isLead && bytes.size() > 1 ? 2 : 1;
            wchar_t character = first;
            if (first >= 0x80) {
                character = characterOf(codePage_, bytes.substr(0, length));
                if (character == L'\0') {
                    character = first;
                    length = 1;
                }
            }
            text += character;
            bytes.remove_prefix(length);
        }
        return text;
    }

    bool encode(char32_t character, std::string& bytes) const override {
        const auto unit = static_cast<wchar_t>(character);
        char output[4];
        BOOL usedDefault = FALSE;
        const int count = character > 0xFFFF
                              ? 0
                              : WideCharToMultiByte(codePage_, WC_NO_BEST_FIT_CHARS, &unit, 1,
                                                    output, sizeof(output), nullptr, &usedDefault);
        if (count <= 0 || usedDefault != FALSE) {
            return false;
        }
        bytes.append(output, static_cast<std::size_t>(count));
        return true;
    }

private:
    UINT codePage_;
};

/// The name by which iconv knows the page, so that both systems call it the same.
std::string nameOf(UINT codePage) {
    if (codePage == CP_UTF8) {
        return "UTF-8";
    }
    const bool isWindowsPage = codePage >= 1250 && codePage <= 1258;
    return (isWindowsPage ? "WINDOWS-" : "CP") + std::to_string(codePage);
}

}  // namespace

std::unique_ptr<CodePage> defaultCodePage() {
    const UINT codePage = GetACP();
    if (codePage == CP_UTF8) {
        return std::make_unique<Utf8CodePage>(nameOf(codePage));
    }
    CPINFO information{};
    if (GetCPInfo(codePage, &information) != FALSE && information.MaxCharSize > 1) {
        return std::make_unique<DoubleByteCodePage>(nameOf(codePage), codePage);
    }
    SingleByteCodePage::Characters characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
        const char input = static_cast<char>(byte);
        const wchar_t character =
            byte < 0x80 ? L'\0' : characterOf(codePage, std::string_view(&input, 1));
        characters[byte] = character == L'\0' ? static_cast<wchar_t>(byte) : character;
    }
    return std::make_unique<SingleByteCodePage>(nameOf(codePage), characters);
}

std::unique_ptr<CodePage> openCodePage(const std::string& name) {
    const std::string own = nameOf(GetACP());
    if (!equalNoCase(std::wstring(name.begin(), name.end()),
                     std::wstring(own.begin(), own.end()))) {
        return nullptr;
    }
    return defaultCodePage();
}

}  // namespace ut

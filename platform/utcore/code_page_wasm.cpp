#include <string_view>

#include <platen/utcore.h>
#include "platform/utcore/code_page.h"
#include "platform/utcore/code_page_tables_wasm.h"

namespace ut {

namespace {

/// The number in "WINDOWS-1251", "CP1251" and "1251"; 0 for any other name.
int windowsNumber(std::string_view name) {
    std::wstring letters(name.begin(), name.end());
    for (const std::wstring_view prefix : {L"windows-", L"cp"}) {
        if (letters.size() > prefix.size() &&
            equalNoCase(letters.substr(0, prefix.size()), prefix)) {
            letters.erase(0, prefix.size());
            break;
        }
    }
    if (letters.empty() || letters.size() > 4) {
        return 0;
    }
    int number = 0;
    for (const wchar_t digit : letters) {
        if (digit < L'0' || digit > L'9') {
            return 0;
        }
        number = number * 10 + (digit - L'0');
    }
    return number;
}

}  // namespace

std::unique_ptr<CodePage> defaultCodePage() { return openCodePage("WINDOWS-1252", windows1252); }

std::unique_ptr<CodePage> openCodePage(const std::string& name) {
    if (isUtf8Name(name)) {
        return std::make_unique<Utf8CodePage>(name);
    }
    const int number = windowsNumber(name);
    if (number == windows1252.number) {
        return openCodePage(name, windows1252);
    }
    for (const CodePageTable& table : otherCodePages) {
        if (table.number == number) {
            return openCodePage(name, table);
        }
    }
    return nullptr;
}

}  // namespace ut

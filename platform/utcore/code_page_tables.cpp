#include "platform/utcore/code_page_tables.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <platen/utcore.h>

namespace ut {

std::unique_ptr<CodePage> openCodePage(std::string name, const CodePageTable& table) {
    SingleByteCodePage::Characters characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
        characters[byte] = byte < 0x80 ? static_cast<wchar_t>(byte) : table.upper[byte - 0x80];
    }
    return std::make_unique<SingleByteCodePage>(std::move(name), characters);
}

bool isUtf8Name(const std::string& name) {
    std::wstring letters(name.begin(), name.end());
    std::erase(letters, L'-');
    return equalNoCase(letters, L"utf8");
}

}  // namespace ut

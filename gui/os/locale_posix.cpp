#include <langinfo.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include <platen/gui_os.h>
#include <platen/utcore.h>

namespace wut {

namespace {

struct LocaleFreer {
    void operator()(locale_t locale) const noexcept { ::freelocale(locale); }
};
using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, LocaleFreer>;

/// The text of a %NAME% without its signs, when there is such a variable.
const char* variable(std::wstring_view name) { return std::getenv(ut::encodePath(name).c_str()); }

std::wstring expanded(std::wstring_view text) {
    std::wstring result;
    while (!text.empty()) {
        const std::size_t end = text.find(L'%', 1);
        if (text.front() == L'%' && end != std::wstring_view::npos) {
            if (const char* value = variable(text.substr(1, end - 1))) {
                result += ut::decodePath(value);
                text.remove_prefix(end + 1);
                continue;
            }
        }
        // The next sign may begin a name, also when it seemed to end one.
        const std::size_t plain = std::min(end, text.size());
        result += text.substr(0, plain);
        text.remove_prefix(plain);
    }
    return result;
}

}  // namespace

wchar_t getSystemDecimalSeparator() {
    // The environment's locale, which the program need not have set.
    const Locale user(::newlocale(LC_ALL_MASK, "", nullptr));
    if (!user) {
        // The C library does not know it and goes on with its own.
        return L'.';
    }
    const char* const separator = ::nl_langinfo_l(RADIXCHAR, user.get());
    const locale_t before = ::uselocale(user.get());
    wchar_t character = L'\0';
    std::mbstate_t state{};
    const std::size_t length = std::mbrtowc(&character, separator, std::strlen(separator), &state);
    ::uselocale(before);
    return length <= MB_LEN_MAX ? character : L'\0';
}

wchar_t getSystemDefaultSeparator() { return getSystemDecimalSeparator() == L',' ? L';' : L','; }

unsigned long expandEnvironmentStrings(const wchar_t* source, wchar_t* target, unsigned long size) {
    if (source == nullptr) {
        return 0;
    }
    const std::wstring result = expanded(source);
    const std::size_t needed = result.size() + 1;
    if (target == nullptr) {
        return needed;
    }
    if (needed <= size) {
        std::copy_n(result.c_str(), needed, target);
    } else if (size > 0) {
        *target = L'\0';
    }
    return needed;
}

}  // namespace wut

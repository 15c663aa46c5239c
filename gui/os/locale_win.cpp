#include <platen/gui_os.h>

#include <iterator>

namespace wut {

namespace {

/// The first character of a setting that has at most 3.
wchar_t firstCharacter(LCTYPE setting) {
    wchar_t text[4] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, setting, text, static_cast<int>(std::size(text)));
    return text[0];
}

}  // namespace

wchar_t getSystemDefaultSeparator() { return firstCharacter(LOCALE_SLIST); }

wchar_t getSystemDecimalSeparator() { return firstCharacter(LOCALE_SDECIMAL); }

unsigned long expandEnvironmentStrings(const wchar_t* source, wchar_t* target, unsigned long size) {
    return source == nullptr
               ? 0
               : ExpandEnvironmentStringsW(source, target, target == nullptr ? 0 : size);
}

}  // namespace wut

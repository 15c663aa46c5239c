#include <algorithm>
#include <string>
#include <string_view>

#include <platen/audit.h>
#include <platen/utcore.h>

namespace platen {
namespace {

bool isPlain(wchar_t character) {
    constexpr std::wstring_view signs = L"_-.,/:=+@";
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z') ||
           (character >= L'0' && character <= L'9') ||
           signs.find(character) != std::wstring_view::npos;
}

/// Characters that cannot be seen for what they are, or no characters at all.
bool cannotBeTyped(wchar_t character) {
    const auto code = static_cast<char32_t>(character);
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0xDC80 && code <= 0xDCFF) ||
           (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2060 && code <= 0x206F) || code == 0xFEFF;
}

/// What Windows' shells act upon inside quotes, too; some take curly quotes for straight ones.
bool actsInQuotes(wchar_t character) {
    constexpr std::wstring_view active = L"\"%$`!\u201C\u201D\u201E";
    return active.find(character) != std::wstring_view::npos;
}

std::wstring quotedFor(Shell shell, const std::wstring& argument) {
    const bool windows = shell == Shell::Windows;
    const bool plain =
        !argument.empty() && std::all_of(argument.begin(), argument.end(), [&](wchar_t character) {
            return isPlain(character) || (windows && character == L'\\');
        });
    // Some shells read a list into what has a comma or an at sign.
    if (plain && argument.find_first_of(windows ? L",@" : L"") == std::wstring::npos) {
        return argument;
    }
    if (windows) {
        return L'"' + argument + L'"';
    }
    std::wstring text = L"'";
    for (const wchar_t character : argument) {
        text += character == L'\'' ? std::wstring(L"'\\''") : std::wstring(1, character);
    }
    return text + L'\'';
}

}  // namespace

std::string commandLine(const std::vector<std::wstring>& command, Shell shell) {
    std::wstring line;
    for (const std::wstring& argument : command) {
        const bool windows = shell == Shell::Windows;
        if (std::any_of(argument.begin(), argument.end(), cannotBeTyped) ||
            (windows && (argument.ends_with(L'\\') ||
                         std::any_of(argument.begin(), argument.end(), actsInQuotes)))) {
            return {};
        }
        line += (line.empty() ? L"" : L" ") + quotedFor(shell, argument);
    }
    return ut::encodeUtf8(line);
}

}  // namespace platen

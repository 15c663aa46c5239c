#include "house/portable_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include <platen/utcore.h>

namespace platen::house {
namespace {

/// Shorter than any system's limit, with room for the ends of copies.
constexpr std::size_t longestName = 200;
constexpr std::size_t longestPath = 1000;
constexpr std::size_t deepest = 32;

bool isReserved(wchar_t character) {
    constexpr std::wstring_view reserved = L"<>:\"/\\|?*\x7F";
    // Half a pair stands for a byte that is no text, or for nothing.
    const bool isHalf = character >= 0xD800 && character <= 0xDFFF && sizeof(wchar_t) > 2;
    return character < L' ' || isHalf || reserved.find(character) != std::wstring_view::npos;
}

/// On Windows "nul", "Nul.txt" and "nul .a.b" are no files.
bool isDevice(std::wstring_view name) {
    constexpr std::array<std::wstring_view, 6> devices{L"con", L"prn",    L"aux",
                                                       L"nul", L"conin$", L"conout$"};
    std::wstring_view stem = name.substr(0, name.find(L'.'));
    stem = stem.substr(0, stem.find_last_not_of(L' ') + 1);
    const std::wstring word = folded(stem);
    constexpr std::wstring_view numbers = L"0123456789\xB9\xB2\xB3";
    const bool isPort = word.size() == 4 &&
                        (word.starts_with(L"com") || word.starts_with(L"lpt")) &&
                        numbers.find(word[3]) != std::wstring_view::npos;
    return isPort || std::ranges::find(devices, word) != devices.end();
}

/// Windows leaves these out at the end of a name.
bool endsInNothing(std::wstring_view name) { return name.ends_with(L'.') || name.ends_with(L' '); }

std::string nameFault(std::wstring_view name) {
    return name.empty()                            ? "it has an empty name in it"
           : name == L"." || name == L".."         ? "it leads out of its folder"
           : std::ranges::any_of(name, isReserved) ? "a character in it has another meaning"
           : isDevice(name)                        ? "it is the name of a device"
           : endsInNothing(name)                   ? "a name in it ends in a dot or a space"
           : ut::utf16Length(name) > longestName   ? "a name in it is too long"
                                                   : "";
}

std::vector<std::wstring_view> namesOf(std::wstring_view path) {
    std::vector<std::wstring_view> names;
    for (std::size_t begin = 0;;) {
        const std::size_t slash = path.find(L'/', begin);
        names.push_back(path.substr(begin, slash - begin));
        if (slash == std::wstring_view::npos) {
            return names;
        }
        begin = slash + 1;
    }
}

std::wstring portableName(std::wstring_view name) {
    std::wstring portable(ut::utf16Prefix(name, longestName - 8));
    std::ranges::replace_if(portable, isReserved, L'_');
    if (portable.empty() || endsInNothing(portable)) {
        portable += L'_';
    }
    return isDevice(portable) ? L'_' + portable : portable;
}

/// "a/b.pc3" and 2 give "a/b_2.pc3".
std::wstring numbered(const std::wstring& path, int number) {
    const std::size_t name = path.rfind(L'/') + 1;
    const std::size_t dot = path.rfind(L'.');
    const std::size_t at = dot == std::wstring::npos || dot <= name ? path.size() : dot;
    return path.substr(0, at) + L'_' + std::to_wstring(number) + path.substr(at);
}

}  // namespace

std::string pathFault(std::wstring_view path) {
    if (path.size() > longestPath) {
        return "it is too long";
    }
    const std::vector<std::wstring_view> names = namesOf(path);
    if (names.size() > deepest) {
        return "it has too many folders";
    }
    for (const std::wstring_view name : names) {
        if (std::string fault = nameFault(name); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

std::wstring folded(std::wstring_view path) {
    std::wstring letters(path);
    std::ranges::transform(letters, letters.begin(), ut::toLower);
    return letters;
}

bool PortablePaths::isBelowFile(const std::wstring& path) const {
    const std::wstring wanted = folded(path);
    for (std::size_t slash = wanted.find(L'/'); slash != std::wstring::npos;
         slash = wanted.find(L'/', slash + 1)) {
        if (files_.contains(wanted.substr(0, slash))) {
            return true;
        }
    }
    return false;
}

bool PortablePaths::isFree(const std::wstring& path) const {
    const std::wstring wanted = folded(path);
    return !files_.contains(wanted) && !folders_.contains(wanted) && !isBelowFile(path);
}

void PortablePaths::keep(const std::wstring& path) {
    const std::wstring kept = folded(path);
    for (std::size_t slash = kept.find(L'/'); slash != std::wstring::npos;
         slash = kept.find(L'/', slash + 1)) {
        folders_.insert(kept.substr(0, slash));
    }
    files_.insert(kept);
}

std::wstring PortablePaths::take(std::wstring_view wanted) {
    std::wstring path;
    const std::vector<std::wstring_view> names = namesOf(wanted);
    // What is nested too deep comes up to where it is not.
    const std::size_t first = names.size() > deepest ? names.size() - deepest : 0;
    for (std::size_t index = first; index < names.size(); ++index) {
        path += (path.empty() ? L"" : L"/") + portableName(names[index]);
    }
    if (path.size() > longestPath - 8) {
        path = portableName(names.back());
    }
    if (isBelowFile(path)) {
        path = portableName(path);
    }
    std::wstring free = path;
    for (int number = 2; !isFree(free); ++number) {
        free = numbered(path, number);
    }
    keep(free);
    return free;
}

std::string PortablePaths::takeExactly(std::wstring_view path) {
    std::string fault = pathFault(path);
    if (fault.empty() && !isFree(std::wstring(path))) {
        fault = "another file has its name, but for case, or the name of its folder";
    }
    if (fault.empty()) {
        keep(std::wstring(path));
    }
    return fault;
}

}  // namespace platen::house

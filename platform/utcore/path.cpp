#include "platform/utcore/path.h"

#include <algorithm>

#include <platen/utcore.h>
#include "platform/utcore/utf.h"

namespace ut {

std::wstring decodePath(std::string_view bytes) { return decodeUtf8Lenient(bytes, true); }

std::string encodePath(std::wstring_view path) {
    std::string bytes;
    bytes.reserve(path.size());
    while (!path.empty()) {
        char32_t character = takeCharacter(path);
        if (character >= 0xDC80 && character <= 0xDCFF) {
            bytes += static_cast<char>(character - 0xDC00);
            continue;
        }
        if (isSurrogate(character)) {
            character = replacementCharacter;
        }
        char sequence[4];
        bytes.append(sequence, writeUtf8(character, sequence));
    }
    return bytes;
}

std::size_t lastComponent(std::wstring_view path) {
    const auto separator = std::find_if(path.rbegin(), path.rend(), isPathSeparator);
    return static_cast<std::size_t>(path.rend() - separator);
}

namespace {

/// Where the extension of `path` begins, its dot included; the end when it has none.
std::size_t extensionOf(std::wstring_view path) {
    const std::size_t name = lastComponent(path);
    const std::size_t dot = path.rfind(L'.');
    // A name that begins with its only dot is a hidden file's, without extension.
    return dot == std::wstring_view::npos || dot <= name ? path.size() : dot;
}

}  // namespace

bool hasExtension(std::wstring_view path, std::wstring_view extension) {
    path.remove_prefix(extensionOf(path));
    return equalNoCase(path.empty() ? path : path.substr(1), extension);
}

std::wstring withExtension(std::wstring_view path, std::wstring_view extension) {
    return std::wstring(path.substr(0, extensionOf(path))).append(1, L'.').append(extension);
}

std::wstring_view fileNameOf(std::wstring_view path) {
    const bool hasDrive =
        path.size() > 1 && path[1] == L':' && toLower(path[0]) >= L'a' && toLower(path[0]) <= L'z';
    path.remove_prefix(hasDrive ? 2 : 0);
    path.remove_prefix(path.find_last_of(L"/\\") + 1);
    return path;
}

std::wstring_view folderOf(std::wstring_view path) {
    std::wstring_view folder = path.substr(0, lastComponent(path));
    const auto isRoot = [&] {
        const wchar_t before = folder.size() > 1 ? folder[folder.size() - 2] : L'\0';
        return folder.size() == 1 || folder.back() == L':' || before == L':';
    };
    while (!folder.empty() && isPathSeparator(folder.back()) && !isRoot()) {
        folder.remove_suffix(1);
    }
    return folder;
}

std::wstring joinPath(std::wstring_view folder, std::wstring_view name) {
    std::wstring path(folder);
    if (!path.empty() && !isPathSeparator(path.back())) {
        path += preferredSeparator();
    }
    return path.append(name);
}

}  // namespace ut

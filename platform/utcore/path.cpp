#include "platform/utcore/path.h"

#include <algorithm>

#include "platform/utcore/utf.h"
#include "utcore.h"

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

bool hasExtension(std::wstring_view path, std::wstring_view extension) {
    const std::wstring_view name = path.substr(lastComponent(path));
    const std::size_t dot = name.rfind(L'.');
    // A name that begins with its only dot is a hidden file's, without extension.
    const bool has = dot != std::wstring_view::npos && dot > 0;
    return equalNoCase(has ? name.substr(dot + 1) : std::wstring_view(), extension);
}

}  // namespace ut

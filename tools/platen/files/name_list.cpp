#include "tools/platen/files/name_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "tools/platen/files/source.h"

namespace cli::files {
namespace {

/// Little-endian, without the mark. A pair of surrogates is a character on every system.
std::wstring decodeUtf16(std::string_view bytes) {
    std::wstring units;
    for (std::size_t place = 0; place + 1 < bytes.size(); place += 2) {
        const auto low = static_cast<unsigned char>(bytes[place]);
        const auto high = static_cast<unsigned char>(bytes[place + 1]);
        units += static_cast<wchar_t>(high << 8U | low);
    }
    return ut::decodePath(ut::encodeUtf8(units));
}

std::wstring decoded(std::string_view bytes) {
    constexpr std::string_view utf16Mark = "\xFF\xFE";
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(utf16Mark)) {
        return decodeUtf16(bytes.substr(utf16Mark.size()));
    }
    std::wstring text;
    bytes.remove_prefix(bytes.starts_with(utf8Mark) ? utf8Mark.size() : 0);
    return ut::decodeUtf8(bytes, text) ? text : ut::decodeAnsi(bytes);
}

}  // namespace

bool readNames(const std::string& file, std::vector<std::wstring>& names, const Console& console) {
    constexpr std::uint64_t most = std::uint64_t{64} << 20U;
    std::string bytes;
    if (!readBytes(file, bytes, most, console)) {
        return false;
    }
    const std::wstring text = decoded(bytes);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n", begin), text.size());
        std::wstring name =
            ut::removeSpaces(std::wstring_view(text).substr(begin, end - begin), "be");
        if (!name.empty()) {
            names.push_back(std::move(name));
        }
        begin = end + 1;
    }
    return true;
}

}  // namespace cli::files

// Texts, numbers and paths below the documents, each against a law or a plain second way.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "fuzz/oracle.h"
#include "platform/utcore/markup.h"

namespace {

/// Well-formed by the definition, a character at a time.
bool isUtf8Plainly(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto first = static_cast<unsigned char>(bytes.front());
        const std::size_t length = first < 0x80   ? 1
                                   : first < 0xC0 ? 0
                                   : first < 0xE0 ? 2
                                   : first < 0xF0 ? 3
                                   : first < 0xF8 ? 4
                                                  : 0;
        if (length == 0 || bytes.size() < length) {
            return false;
        }
        std::uint32_t point = length == 1 ? first : first & (0x7FU >> length);
        for (const char byte : bytes.substr(1, length - 1)) {
            if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
                return false;
            }
            point = point << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
        }
        constexpr std::uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
        if (point < least[length] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

void encodings(std::string_view bytes) {
    require(ut::isUtf8(bytes) == isUtf8Plainly(bytes));
    require(ut::encodePath(ut::decodePath(bytes)) == bytes);
    std::wstring text;
    require(ut::decodeUtf8(bytes, text) == ut::isUtf8(bytes));
    require(!ut::isUtf8(bytes) || ut::encodeUtf8(text) == bytes);
    const std::wstring ansi = ut::decodeAnsi(bytes);
    require(ansi.size() == bytes.size());
    std::string back;
    // Bytes that the page does not define are read as characters that it does not hold.
    require(ut::convertToAnsi(ansi, back) > 0 || back == bytes);
    require(back.size() == bytes.size());
    const std::string shown = ut::printable(bytes);
    require(std::none_of(shown.begin(), shown.end(),
                         [](char byte) { return static_cast<unsigned char>(byte) < 0x20; }));
    const std::string markup = ut::escapeMarkup(ut::encodeUtf8(ansi));
    require(markup.find_first_of("<>\"") == std::string::npos);
}

void numbers(std::string_view bytes) {
    const std::wstring wide = ut::decodeAnsi(bytes);
    std::int32_t narrow = 0;
    std::int32_t integer = 0;
    if (ut::isAscii(bytes)) {
        require(ut::scanInt(bytes, narrow) == ut::scanInt(wide, integer) && narrow == integer);
        double one = 0;
        double other = 0;
        require(ut::scanDouble(bytes, one) == ut::scanDouble(wide, other));
        require(std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other));
        // The C library in its own locale, as far as it reads the same.
        const std::string text(bytes);
        char* end = nullptr;
        const double byC = std::strtod(text.c_str(), &end);
        const bool decimal = bytes.find_first_not_of("0123456789.+-eE") == std::string_view::npos;
        if (decimal && ut::scanDouble(bytes, one)) {
            require(end != text.c_str() && byC == one);
        }
    }
    double value = 0;
    if (bytes.size() >= sizeof value) {
        std::memcpy(&value, bytes.data(), sizeof value);
        if (std::isfinite(value)) {
            double back = 0;
            require(ut::scanDouble(ut::formatFixedAscii(value, 6), back));
            require(std::fabs(back - value) <= 5.1e-7 + std::fabs(value) * 1e-15);
            require(ut::encodeUtf8(ut::formatFixed(value, 3)) == ut::formatFixedAscii(value, 3));
            const std::string rounded = ut::formatRounded(value, 4);
            require(!rounded.empty() && rounded.back() != '.');
        }
    }
}

/// Sorting is a strict weak ordering.
void order(std::string_view bytes) {
    std::vector<std::wstring> texts(1);
    for (const wchar_t character : ut::decodePath(bytes)) {
        if (character == L'\n' || character == L'\0') {
            texts.emplace_back();
        } else {
            texts.back() += character;
        }
    }
    texts.resize(std::min<std::size_t>(texts.size(), 3), L"");
    for (const bool noCase : {false, true}) {
        const auto sign = [&](std::size_t left, std::size_t right) {
            const int result =
                ut::strCmpAlphanum(texts[left].c_str(), texts[right].c_str(), noCase);
            return (result > 0) - (result < 0);
        };
        for (std::size_t one = 0; one < texts.size(); ++one) {
            require(sign(one, one) == 0);
            for (std::size_t two = 0; two < texts.size(); ++two) {
                require(sign(one, two) == -sign(two, one));
                for (std::size_t three = 0; three < texts.size(); ++three) {
                    require(!(sign(one, two) <= 0 && sign(two, three) <= 0) ||
                            sign(one, three) <= 0);
                }
            }
        }
    }
}

/// Whether a part of a path ends in a dot or a blank, which Windows takes off where it makes a path
/// full.
bool hasPartThatIsCut(const std::wstring& path) {
    for (std::size_t index = 0; index < path.size(); ++index) {
        const bool last =
            index + 1 == path.size() || path[index + 1] == L'/' || path[index + 1] == L'\\';
        if (last && (path[index] == L'.' || path[index] == L' ')) {
            return true;
        }
    }
    return false;
}

void paths(std::string_view bytes) {
    const std::wstring path = ut::decodePath(bytes);
    if (path.find(L'\0') != std::wstring::npos) {
        return;
    }
    const ut::FileName name(path);
    const std::wstring full = name.getFullPath();
    if (!hasPartThatIsCut(path)) {
        require(ut::FileName(full).getFullPath() == full);
        require(name == ut::FileName(full) || path.empty());
    }
    require(ut::fileNameOf(path).find_first_of(L"/\\") == std::wstring_view::npos);
    const std::wstring renamed = ut::withExtension(path, L"ctb");
    require(ut::fileNameOf(path).empty() || ut::hasExtension(renamed, L"CTB"));
    const std::wstring trimmed = ut::removeSpaces(path, "be");
    require(trimmed.empty() || (!ut::isSpace(trimmed.front()) && !ut::isSpace(trimmed.back())));
    require(ut::utf16Length(ut::utf16Prefix(path, 7)) <= 7);
}

/// Values go through a stream; any bytes are read to their end without harm.
void streams(std::string_view bytes) {
    ut::CIBinStream in(bytes);
    ut::COBinStream out;
    std::size_t taken = 0;
    for (unsigned turn = 0;; ++turn) {
        std::int32_t integer = 0;
        double real = 0;
        bool flag = false;
        std::wstring text;
        bool read = false;
        switch (turn % 4) {
            case 0:
                if ((read = in.read(integer))) {
                    out.write(integer);
                }
                break;
            case 1:
                if ((read = in.read(flag))) {
                    out.write(flag);
                }
                break;
            case 2:
                if ((read = in.read(text))) {
                    out.write(std::wstring_view(text));
                }
                break;
            default:
                if ((read = in.read(real))) {
                    out.write(real);
                }
        }
        if (!read) {
            break;
        }
        taken = bytes.size() - in.remaining();
    }
    // A flag is any byte but 0, and lone surrogates of a text stay.
    require(out.bytes().size() == taken);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    encodings(bytes);
    numbers(bytes);
    order(bytes);
    paths(bytes);
    streams(bytes);
    return 0;
}

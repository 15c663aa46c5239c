#include "print/hex_text.h"

namespace wut {
namespace {

unsigned digitValue(wchar_t digit) {
    if (digit >= L'0' && digit <= L'9') {
        return static_cast<unsigned>(digit - L'0');
    }
    if (digit >= L'A' && digit <= L'F') {
        return static_cast<unsigned>(digit - L'A') + 10;
    }
    return digit >= L'a' && digit <= L'f' ? static_cast<unsigned>(digit - L'a') + 10 : 0;
}

}  // namespace

std::wstring hexText(std::span<const std::byte> bytes) {
    constexpr std::wstring_view digits = L"0123456789ABCDEF";
    std::wstring text;
    text.reserve(bytes.size() * 2);
    for (const std::byte byte : bytes) {
        const auto value = std::to_integer<unsigned>(byte);
        text += digits[value >> 4U];
        text += digits[value & 0xFU];
    }
    return text;
}

std::vector<std::byte> hexBytes(std::wstring_view text) {
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
        bytes.push_back(
            static_cast<std::byte>(digitValue(text[at]) * 16 + digitValue(text[at + 1])));
    }
    return bytes;
}

}  // namespace wut

#include <bit>
#include <limits>

#include <platen/utcore.h>
#include "platform/utcore/utf.h"

namespace ut {

namespace {

/// `bytes` as a little-endian integer, whatever the processor's order.
template <typename Unsigned>
Unsigned fromLittleEndian(std::string_view bytes) {
    Unsigned value = 0;
    for (std::size_t i = sizeof(Unsigned); i-- > 0;) {
        value = static_cast<Unsigned>(static_cast<std::uint64_t>(value) << 8 |
                                      static_cast<unsigned char>(bytes[i]));
    }
    return value;
}

template <typename Unsigned>
void appendLittleEndian(Unsigned value, std::string& bytes) {
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

}  // namespace

bool CIBinStream::take(std::size_t count, std::string_view& bytes) {
    if (failed_ || rest_.size() < count) {
        failed_ = true;
        return false;
    }
    bytes = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return true;
}

bool CIBinStream::read(std::int32_t& value) {
    std::string_view bytes;
    if (!take(4, bytes)) {
        return false;
    }
    value = static_cast<std::int32_t>(fromLittleEndian<std::uint32_t>(bytes));
    return true;
}

bool CIBinStream::read(double& value) {
    std::string_view bytes;
    if (!take(8, bytes)) {
        return false;
    }
    value = std::bit_cast<double>(fromLittleEndian<std::uint64_t>(bytes));
    return true;
}

bool CIBinStream::read(bool& value) {
    std::string_view bytes;
    if (!take(1, bytes)) {
        return false;
    }
    if (bytes.front() != 0 && bytes.front() != 1) {
        failed_ = true;
        return false;
    }
    value = bytes.front() == 1;
    return true;
}

bool CIBinStream::read(std::wstring& value) {
    std::int32_t count = 0;
    std::string_view bytes;
    if (!read(count)) {
        return false;
    }
    // A negative count is no size; both that and one beyond the data must fail before it allocates.
    if (count < 0 || !take(static_cast<std::size_t>(count) * 2, bytes)) {
        failed_ = true;
        return false;
    }
    std::wstring text;
    text.reserve(static_cast<std::size_t>(count));
    while (!bytes.empty()) {
        char32_t character = fromLittleEndian<std::uint16_t>(bytes);
        bytes.remove_prefix(2);
        if (isHighSurrogate(character) && !bytes.empty()) {
            const char32_t low = fromLittleEndian<std::uint16_t>(bytes);
            if (isLowSurrogate(low)) {
                character = joinSurrogates(character, low);
                bytes.remove_prefix(2);
            }
        }
        wchar_t units[2];
        text.append(units, writeWide(character, units));
    }
    value = std::move(text);
    return true;
}

void COBinStream::write(std::int32_t value) {
    appendLittleEndian(static_cast<std::uint32_t>(value), bytes_);
}

void COBinStream::write(double value) {
    appendLittleEndian(std::bit_cast<std::uint64_t>(value), bytes_);
}

void COBinStream::write(bool value) { bytes_ += value ? '\1' : '\0'; }

void COBinStream::write(std::wstring_view value) {
    value = utf16Prefix(value, std::numeric_limits<std::int32_t>::max());
    write(static_cast<std::int32_t>(utf16Length(value)));
    while (!value.empty()) {
        const char32_t character = takeCharacter(value);
        if (utf16Units(character) == 2) {
            appendLittleEndian(static_cast<std::uint16_t>(highSurrogate(character)), bytes_);
            appendLittleEndian(static_cast<std::uint16_t>(lowSurrogate(character)), bytes_);
        } else {
            appendLittleEndian(static_cast<std::uint16_t>(character), bytes_);
        }
    }
}

}  // namespace ut

/// The host application's utility library, as far as Platen calls it: a stand-in that a host
/// replaces by its own.
///
/// Wide text is UTF-16 where `wchar_t` has 16 bits and UTF-32 where it has 32; both are handled
/// alike, and every length limit counts UTF-16 units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <platen/platen_api.h>

namespace ut {

// ---------------------------------------------------------------------------------------------
// Bytes

/// A growing byte buffer that does not clear what is about to be overwritten.
class PLATEN_API ByteBuffer {
public:
    ByteBuffer() = default;
    ByteBuffer(ByteBuffer&& other) noexcept;
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;
    ~ByteBuffer() = default;

    /// Null before the first `reserve`.
    ///@{
    char* data() { return bytes_.get(); }
    const char* data() const { return bytes_.get(); }
    ///@}
    std::size_t size() const { return size_; }          ///< Bytes in use.
    std::size_t capacity() const { return capacity_; }  ///< Bytes that there is room for.
    /// Valid until the buffer is changed.
    std::string_view view() const { return {bytes_.get(), size_}; }

    /// Makes room for `capacity` bytes in all and keeps the content.
    void reserve(std::size_t capacity);
    /// Sets the size, which must not exceed the capacity. New bytes hold anything.
    void setSize(std::size_t size) { size_ = size; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// ---------------------------------------------------------------------------------------------
// Text

/// True when `bytes` is well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF.
[[nodiscard]] PLATEN_API bool isUtf8(std::string_view bytes);
/// True when every byte is below 128.
[[nodiscard]] PLATEN_API bool isAscii(std::string_view bytes);
/// Replaces `text` by the decoded bytes. On malformed UTF-8 returns false and leaves `text` as it
/// was.
[[nodiscard]] PLATEN_API bool decodeUtf8(std::string_view bytes, std::wstring& text);
/// UTF-8 of `text`; a lone surrogate becomes U+FFFD.
PLATEN_API std::string encodeUtf8(std::wstring_view text);

/// The file name that an operating system gave as UTF-8, as wide text. A byte that is not UTF-8
/// becomes U+DC00 + byte, and `encodePath` turns it back: any name survives the round trip.
PLATEN_API std::wstring decodePath(std::string_view bytes);
/// The inverse of `decodePath`.
PLATEN_API std::string encodePath(std::wstring_view path);

/// Sets the ANSI code page that bodies are written in and, when they are not UTF-8, read in.
/// Linux: any superset of ASCII that iconv knows; the start value is "WINDOWS-1252". Windows: the
/// system's code page is the only one, and only its own name is accepted. False leaves the code
/// page as it was.
/// Call it before other threads use text functions.
[[nodiscard]] PLATEN_API bool setAnsiCodePage(const char* name);
/// The name of the ANSI code page, such as "WINDOWS-1252".
PLATEN_API std::string ansiCodePage();
/// Decodes with the ANSI code page. Never fails: a byte that it does not define becomes the code
/// point of the same number.
PLATEN_API std::wstring decodeAnsi(std::string_view bytes);
/// Appends `text` in the ANSI code page. A character that it does not hold becomes "?" (one for
/// each UTF-16 unit); the number of such units is returned.
PLATEN_API std::size_t convertToAnsi(std::wstring_view text, std::string& bytes);

/// Number of UTF-16 units of `text`.
PLATEN_API std::size_t utf16Length(std::wstring_view text);
/// The longest beginning of `text` of at most `units` UTF-16 units; a surrogate pair stays whole.
PLATEN_API std::wstring_view utf16Prefix(std::wstring_view text, std::size_t units);
/// UTF-8 text in which control characters are spelled out ("\x1B"), since files may hold any and a
/// terminal acts upon them. Line feeds stay when `keepLines`.
PLATEN_API std::string printable(std::string_view text, bool keepLines = false);
/// Ordinal comparison by UTF-16 units: negative, 0 or positive.
PLATEN_API int compareOrdinal(std::wstring_view left, std::wstring_view right);

/// Wide white space: the same characters on every system, whatever the locale.
[[nodiscard]] PLATEN_API bool isSpace(wchar_t character);
/// `toLower` of a character that is not ASCII.
PLATEN_API wchar_t toLowerBeyondAscii(wchar_t character);
/// Lower case by simple mapping, the same on every system, whatever the locale.
inline wchar_t toLower(wchar_t character) {
    if (character < L'\x80') {
        return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + 0x20)
                                                      : character;
    }
    return toLowerBeyondAscii(character);
}
/// True when the texts are equal after `toLower` of each character.
[[nodiscard]] PLATEN_API bool equalNoCase(std::wstring_view left, std::wstring_view right);

/// Compares as people sort: runs of the digits 0 to 9 by value, however long, other characters one
/// by one, after `toLower` when `noCase`. Texts that differ in leading zeros alone are ordered by
/// the first run that does, the shorter one first. Negative, 0 or positive; a strict weak ordering.
[[nodiscard]] PLATEN_API int strCmpAlphanum(const wchar_t* left, const wchar_t* right, bool noCase);

/// Scans `text` as "%d" does: leading white space, a sign, decimal digits, anything after them.
/// A value beyond 32 bits does not convert; one between 2^31 and 2^32 - 1 gives the integer of the
/// same bits, as packed colours are written both ways. False leaves `value` as it was.
[[nodiscard]] PLATEN_API bool scanInt(std::wstring_view text, std::int32_t& value);
/// `scanInt` of any ASCII text.
[[nodiscard]] PLATEN_API bool scanAnyInt(std::string_view text, std::int32_t& value);
/// The same for ASCII.
[[nodiscard]] inline bool scanInt(std::string_view text, std::int32_t& value) {
    // Nearly all numbers are a few digits and nothing else.
    constexpr std::size_t surelyFit = 9;
    if (text.empty() || text.size() > surelyFit) {
        return scanAnyInt(text, value);
    }
    std::int32_t number = 0;
    for (const char character : text) {
        if (character < '0' || character > '9') {
            return scanAnyInt(text, value);
        }
        number = number * 10 + (character - '0');
    }
    value = number;
    return true;
}
/// Scans `text` as "%lf" does, with a decimal point whatever the locale. A value that is not
/// finite or beyond the range of a double does not convert. False leaves `value` as it was.
[[nodiscard]] PLATEN_API bool scanDouble(std::wstring_view text, double& value);
/// The same for ASCII.
[[nodiscard]] PLATEN_API bool scanDouble(std::string_view text, double& value);
/// The same as "%f": the nearest single-precision number, which that of the nearest double need not
/// be.
[[nodiscard]] PLATEN_API bool scanFloat(std::wstring_view text, float& value);
/// Fixed notation with `precision` digits after the point (6 when negative).
PLATEN_API std::wstring formatFixed(double value, int precision);
/// The same as ASCII.
PLATEN_API std::string formatFixedAscii(double value, int precision);
/// Fixed notation with at most `precision` digits after the point, the zeros at its end left out.
PLATEN_API std::string formatRounded(double value, int precision);

// ---------------------------------------------------------------------------------------------
// Files

/// What an operating system call said when it failed.
struct PLATEN_API SystemError {
    /// errno or GetLastError; 0 when nothing failed.
    std::uint32_t code = 0;
    /// The call that failed in plain words, such as "open" or "rename".
    const char* action = "";

    explicit operator bool() const { return code != 0; }  ///< True when a call failed.
    /// Action and the system's own text, such as "open: No such file or directory".
    std::string message() const;
};

/// Reads a whole file. `limit` bounds what is taken: a larger file (or an endless device) fails
/// with `tooLarge` set. On failure `bytes` stays as it was.
[[nodiscard]] PLATEN_API SystemError readFile(std::wstring_view path, std::uint64_t limit,
                                              ByteBuffer& bytes, bool& tooLarge);

/// Replaces `path` by a file that holds the concatenated `pieces`, or leaves it as it was: writes
/// beside the destination, flushes to the device, renames over it. Nothing is left behind on
/// failure. A symbolic link is followed; permissions of an existing file are kept; a destination
/// that is not a regular file (a device, a pipe) is written straight.
[[nodiscard]] PLATEN_API SystemError replaceFile(std::wstring_view path,
                                                 std::span<const std::string_view> pieces);

/// `path` with the separators that the system prefers.
PLATEN_API std::wstring correctSlashes(std::wstring_view path);
/// True when the extension of `path` equals `extension` (without its dot), ignoring case.
[[nodiscard]] PLATEN_API bool hasExtension(std::wstring_view path, std::wstring_view extension);
/// `path` with the extension of its last component replaced, or added where it has none.
PLATEN_API std::wstring withExtension(std::wstring_view path, std::wstring_view extension);

/// The last component of a path, which may be one of another system: documents carry the paths of
/// the machine that wrote them, so that a backslash separates everywhere.
PLATEN_API std::wstring_view fileNameOf(std::wstring_view path);
/// The folder of a path of this system, without a separator at its end unless it is a root; empty
/// when the path names none.
PLATEN_API std::wstring_view folderOf(std::wstring_view path);
/// `name` in `folder`; an empty folder gives the name alone.
PLATEN_API std::wstring joinPath(std::wstring_view folder, std::wstring_view name);
/// The path from the root, as far as the system can tell; nothing on it needs to exist.
PLATEN_API std::wstring fullPath(std::wstring_view path);

/// True when `path` leads to something that is no folder.
[[nodiscard]] PLATEN_API bool fileExists(std::wstring_view path);
/// True when `path` leads to a folder.
[[nodiscard]] PLATEN_API bool folderExists(std::wstring_view path);

// ---------------------------------------------------------------------------------------------
// Settings of the application

/// The value of a setting; empty when it has none. Until `setSetting` gives it one, the value of
/// "PlotCfgPath" is that of the environment variable PLATEN_PLOT_CFG_PATH, and so on: a word of the
/// name for each capital. May be called from any thread.
PLATEN_API std::wstring getSetting(std::wstring_view name);
/// Gives a setting its value, for the whole process. May be called from any thread.
PLATEN_API void setSetting(std::wstring_view name, std::wstring_view value);

/// What the application says about itself.
class PLATEN_API Config {
public:
    /// The product's name, which message boxes have for a caption: the setting "RegProduct", or
    /// "Platen" when it is empty. May be called from any thread.
    static std::wstring regProduct();
    /// Sets the setting "RegProduct".
    static void setRegProduct(std::wstring_view name);
};

// ---------------------------------------------------------------------------------------------
// Compression

/// Whole-buffer zlib streams. Results are 0 or zlib's own error code.
class PLATEN_API ZlibEngine {
public:
    /// Why `decompress` stopped short of a whole stream.
    enum class Stop { None, Truncated, Corrupt, TooLarge };

    /// Appends the zlib stream of `source` to `target`; `level` 0 to 9.
    [[nodiscard]] static int compress(std::string_view source, ByteBuffer& target, int level);

    /// Replaces `target` by the inflated `source`, at most `limit` bytes. On failure `target` holds
    /// what came before it.
    /// `sizeHint` (bytes, 0 for unknown) sizes the first allocation; it is not trusted.
    /// `consumed` is the number of bytes of `source` that belong to the stream.
    [[nodiscard]] static int decompress(std::string_view source, ByteBuffer& target,
                                        std::uint64_t sizeHint, std::uint64_t limit,
                                        std::size_t& consumed, Stop& stop);
};

// ---------------------------------------------------------------------------------------------
// Binary streams: little-endian integers and IEEE doubles, booleans as one byte, texts as a
// 32-bit count of UTF-16 units followed by the units.

/// Reads what `COBinStream` wrote. Every call returns false at the end of the data or on a
/// malformed value, leaves its argument as it was, and fails from then on.
class PLATEN_API CIBinStream {
public:
    /// Borrows `bytes`.
    explicit CIBinStream(std::string_view bytes) : rest_(bytes) {}
    /// The next value.
    ///@{
    [[nodiscard]] bool read(std::int32_t& value);
    [[nodiscard]] bool read(double& value);
    [[nodiscard]] bool read(bool& value);
    [[nodiscard]] bool read(std::wstring& value);
    ///@}
    /// Bytes not read yet.
    std::size_t remaining() const { return rest_.size(); }

private:
    bool take(std::size_t count, std::string_view& bytes);

    std::string_view rest_;
    bool failed_ = false;
};

class PLATEN_API COBinStream {
public:
    /// Appends the value.
    ///@{
    void write(std::int32_t value);
    void write(double value);
    void write(bool value);
    void write(std::wstring_view value);
    ///@}
    const std::string& bytes() const { return bytes_; }  ///< All that was written.

private:
    std::string bytes_;
};

}  // namespace ut

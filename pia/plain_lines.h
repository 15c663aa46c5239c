/// Lines of a body that need no care when they are written.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include <platen/pia.h>

namespace pia_body {

/// Wide characters of a line; one more of the 512 ends the text.
inline constexpr std::size_t lineLimit = 511;
/// Blocks deeper than this are refused by readers with default limits.
inline constexpr std::size_t depthLimit = PiaLimits().depth;

/// What stands around the value of an item.
struct Frame {
    std::string_view before;
    std::string_view after;
};

inline Frame frameOf(PiaItemType type) {
    switch (type) {
        case PiaItemType::Bin:
            return {"=\\", "\\"};
        case PiaItemType::Block:
            return {"{", ""};
        case PiaItemType::Str:
            return {"=\"", ""};
        case PiaItemType::Bool:
        case PiaItemType::Num:
            break;
    }
    return {"=", ""};
}

struct Name {
    std::wstring_view text;
    /// True when the text stays where it is until the body is written.
    bool isKept;
};

/// The characters that a plain name or value does not hold: those that mean something to a reader.
constexpr std::array<bool, 128> marksOf(std::string_view characters) {
    std::array<bool, 128> marks{};
    marks[0] = true;
    for (const char character : characters) {
        marks[static_cast<unsigned char>(character)] = true;
    }
    return marks;
}
inline constexpr std::array<bool, 128> specialInNames = marksOf("\n =}{");
inline constexpr std::array<bool, 128> specialInValues = marksOf("\n\r");

/// Collects lines that need no care: ASCII that fits and reads back as it is.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the room for lines is filled as needed.
class PlainLines {
public:
    /// Adds the line of an item; false, with nothing added, when it needs care.
    template <class Char>
    bool add(std::size_t depth, const Name& name, PiaItemType type,
             std::basic_string_view<Char> value) {
        return type != PiaItemType::Bin && (type != PiaItemType::Num || isPlainNumber(value)) &&
               addLine(depth, name, frameOf(type).before, value.size(),
                       [&] { return append(value, specialInValues); });
    }

    /// The same for a number or flag that was formatted here and needs no look.
    bool addFormatted(std::size_t depth, const Name& name, std::string_view value) {
        return addLine(depth, name, "=", value.size(), [&] {
            appendShort(value);
            return true;
        });
    }

    /// Adds the end of a block.
    void addClosing(std::size_t depth) {
        indent(depth);
        *end_++ = '}';
        endLine();
    }

    /// True when a further line may not fit.
    bool isFull() const { return lines_.size() - used_ <= lineLimit + 1 + slack; }

    void moveTo(std::string& body) {
        body.append(lines_.data(), used_);
        used_ = 0;
    }

private:
    /// Short texts are copied together with what stands behind them, so that their length costs no
    /// branch: bytes of a line that are written beyond its end.
    static constexpr std::size_t slack = 32;

    void indent(std::size_t depth) {
        end_ = lines_.data() + used_;
        if (depth <= slack) {
            std::memset(end_, ' ', slack);
            end_ += depth;
        } else {
            end_ = std::fill_n(end_, depth, ' ');
        }
    }

    void endLine() {
        *end_++ = '\n';
        used_ = static_cast<std::size_t>(end_ - lines_.data());
    }

    template <class AppendValue>
    bool addLine(std::size_t depth, const Name& name, std::string_view frame, std::size_t valueSize,
                 AppendValue appendValue) {
        if (depth >= depthLimit || name.text.empty() ||
            depth + name.text.size() + frame.size() + valueSize > lineLimit) {
            return false;
        }
        indent(depth);
        if (!(name.isKept ? appendKeptName(name.text) : append(name.text, specialInNames))) {
            return false;
        }
        appendShort(frame);
        if (!appendValue()) {
            return false;
        }
        endLine();
        return true;
    }

    /// Appends a text of a few bytes.
    void appendShort(std::string_view text) {
        for (const char character : text) {
            *end_++ = character;
        }
    }

    /// A name that was found plain, with its ASCII form. Names repeat by the thousand.
    struct KnownName {
        const wchar_t* text = nullptr;
        std::size_t size = 0;
        std::array<char, slack> ascii{};
    };

    /// Not empty, and not to be taken for another type.
    template <class Char>
    static bool isPlainNumber(std::basic_string_view<Char> value) {
        if (value.empty()) {
            return false;
        }
        const Char first = value.front();
        return (first >= Char('0') && first <= Char('9')) || first == Char('-');
    }

    bool appendKeptName(std::wstring_view name) {
        // Most short names are numbers of list entries, each for itself.
        constexpr std::size_t shortName = 3;
        if (name.size() <= shortName || name.size() > sizeof KnownName::ascii) {
            return append(name, specialInNames);
        }
        const auto address = reinterpret_cast<std::uintptr_t>(name.data());
        KnownName& known = known_[(address >> 3U ^ address >> 9U) % known_.size()];
        if (known.text != name.data() || known.size != name.size()) {
            char* begin = end_;
            if (!append(name, specialInNames)) {
                return false;
            }
            std::copy(begin, end_, known.ascii.data());
            known.text = name.data();
            known.size = name.size();
            return true;
        }
        std::memcpy(end_, known.ascii.data(), known.ascii.size());
        end_ += known.size;
        return true;
    }

    template <class Char>
    bool append(std::basic_string_view<Char> text, const std::array<bool, 128>& special) {
        char* end = end_;
        for (const Char character : text) {
            // NOLINTNEXTLINE(bugprone-signed-char-misuse): a character as its own unsigned type.
            const auto code = static_cast<std::make_unsigned_t<Char>>(character);
            if (code >= special.size() || special[code]) {
                return false;
            }
            *end++ = static_cast<char>(code);
        }
        end_ = end;
        return true;
    }

    std::array<KnownName, 64> known_;
    /// Room for some lines, and for a name that is copied with what stands behind it.
    std::array<char, 8192> lines_;
    std::size_t used_ = 0;
    char* end_ = nullptr;
};

}  // namespace pia_body

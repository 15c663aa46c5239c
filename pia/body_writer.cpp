#include "pia/body_writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <vector>

#include "pia/body_lines.h"
#include "utcore.h"

namespace {

/// Wide characters of a line; one more of the 512 ends the text.
constexpr std::size_t lineLimit = 511;
/// Blocks deeper than this are refused by readers with default limits.
constexpr std::size_t depthLimit = PiaLimits().depth;

/// Walks over a tree in written order, without recursion.
class Walk {
public:
    explicit Walk(const PiaBlock& root) : levels_{{&root, 0}} {}

    /// Depth of the children that are visited now.
    std::size_t depth() const { return levels_.size() - 1; }

    /// Calls `item(child)` for every child and `close()` after each inner block; stops when one of
    /// them returns false.
    template <class Item, class Close>
    bool run(Item item, Close close) {
        while (true) {
            Level& level = levels_.back();
            if (level.next == level.block->items.size()) {
                levels_.pop_back();
                if (levels_.empty()) {
                    return true;
                }
                close();
                continue;
            }
            const PiaItem& child = *level.block->items[level.next++];
            if (!item(child)) {
                return false;
            }
            if (child.type == PiaItemType::Block) {
                levels_.push_back({static_cast<const PiaBlock*>(&child), 0});
            }
        }
    }

    std::wstring pathOf(const PiaItem& item) const {
        std::wstring path;
        for (const Level& level : levels_) {
            if (!level.block->name.empty()) {
                path.append(level.block->name.view()).append(L"/");
            }
        }
        return path.append(item.name.view());
    }

private:
    struct Level {
        const PiaBlock* block;
        std::size_t next;
    };
    std::vector<Level> levels_;
};

/// What stands around the value of an item.
struct Frame {
    std::string_view before;
    std::string_view after;
};

Frame frameOf(PiaItemType type) {
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

/// Calls `reader` with the value of an item as a view of ASCII or of wide text; that of a block is
/// empty.
template <class Reader>
auto readValue(const PiaItem& item, Reader reader) {
    switch (item.type) {
    case PiaItemType::Bin:
        return static_cast<const PiaBin&>(item).value.read(reader);
    case PiaItemType::Bool:
        return reader(std::string_view(static_cast<const PiaBool&>(item).value ? "TRUE" : "FALSE"));
    case PiaItemType::Str:
        return static_cast<const PiaStr&>(item).value.read(reader);
    case PiaItemType::Num:
        return static_cast<const PiaNum&>(item).value.read(reader);
    case PiaItemType::Block:
        break;
    }
    return reader(std::string_view());
}

std::wstring valueOf(const PiaItem& item) {
    return readValue(item, [](auto text) { return std::wstring(text.begin(), text.end()); });
}

bool holds(std::wstring_view text, wchar_t character) {
    return text.find(character) != std::wstring_view::npos;
}

/// Whether a reader finds this name again in a line at `depth`.
bool nameReadsBack(std::wstring_view name, PiaItemType type, std::size_t depth) {
    return !name.empty() &&
           std::none_of(name.begin(), name.end(), [&](wchar_t character) {
               switch (character) {
               case L' ':
               case L'=':
               case L'\0':
                   return true;
               case L'{':
                   return type == PiaItemType::Block;
               case L'}':
                   return depth > 0;
               default:
                   return false;
               }
           });
}

bool valueReadsBack(std::wstring_view value, PiaItemType type) {
    if (type == PiaItemType::Block || type == PiaItemType::Bool) {
        return true;
    }
    if (holds(value, L'\0')) {
        return false;
    }
    if (type == PiaItemType::Bin) {
        return !holds(value, L'\\');
    }
    // A carriage return before the line feed is dropped.
    if (!value.empty() && value.back() == L'\r') {
        return false;
    }
    return type == PiaItemType::Str ||
           (!value.empty() && value.front() != L'"' && value.front() != L'\\' &&
            !ut::equalNoCase(value, L"true") && !ut::equalNoCase(value, L"false"));
}

/// The characters that a plain name or value does not hold: those that mean something to a reader.
constexpr std::array<bool, 128> isSpecial(std::string_view characters) {
    std::array<bool, 128> marks{};
    marks[0] = true;
    for (const char character : characters) {
        marks[static_cast<unsigned char>(character)] = true;
    }
    return marks;
}
constexpr std::array<bool, 128> specialInNames = isSpecial("\n =}{");
constexpr std::array<bool, 128> specialInValues = isSpecial("\n\r");

/// Collects lines that need no care: ASCII that fits and reads back as it is.
class PlainLines {
public:
    /// Adds the line of an item; false, with nothing added, when it needs care.
    template <class Char>
    bool add(std::size_t depth, const PiaItem& item, std::basic_string_view<Char> value) {
        const Frame frame = frameOf(item.type);
        if (item.type == PiaItemType::Bin || depth >= depthLimit || item.name.empty() ||
            depth + item.name.size() + frame.before.size() + value.size() > lineLimit ||
            (item.type == PiaItemType::Num && !isPlainNumber(value))) {
            return false;
        }
        end_ = std::fill_n(lines_.data() + used_, depth, ' ');
        if (!appendName(item.name)) {
            return false;
        }
        end_ = std::copy(frame.before.begin(), frame.before.end(), end_);
        if (!append(value, specialInValues)) {
            return false;
        }
        *end_++ = '\n';
        used_ = static_cast<std::size_t>(end_ - lines_.data());
        return true;
    }

    /// Adds the end of a block.
    void addClosing(std::size_t depth) {
        end_ = std::fill_n(lines_.data() + used_, depth, ' ');
        *end_++ = '}';
        *end_++ = '\n';
        used_ = static_cast<std::size_t>(end_ - lines_.data());
    }

    /// True when a further line may not fit.
    bool isFull() const { return lines_.size() - used_ <= lineLimit + 1 + sizeof KnownName::ascii; }

    void moveTo(std::string& body) {
        body.append(lines_.data(), used_);
        used_ = 0;
    }

private:
    /// A name that was found plain, with its ASCII form. Names repeat by the thousand.
    struct KnownName {
        const wchar_t* text = nullptr;
        std::size_t size = 0;
        std::array<char, 32> ascii;
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

    bool appendName(const PiaName& name) {
        // Most short names are numbers of list entries, each for itself.
        constexpr std::size_t shortName = 3;
        if (name.size() <= shortName || name.size() > sizeof KnownName::ascii) {
            return append(name.view(), specialInNames);
        }
        const auto address = reinterpret_cast<std::uintptr_t>(name.c_str());
        KnownName& known = known_[(address >> 3U ^ address >> 9U) % known_.size()];
        if (known.text != name.c_str() || known.size != name.size()) {
            char* begin = end_;
            if (!append(name.view(), specialInNames)) {
                return false;
            }
            std::copy(begin, end_, known.ascii.data());
            known.text = name.c_str();
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

class FileBody {
public:
    FileBody(const PiaBlock& root, std::string& body, PiaReport& report)
        : walk_(root), body_(body), report_(report) {}

    bool write() {
        const bool done = walk_.run([this](const PiaItem& item) { return writeItem(item); },
                                    [this] {
                                        makeRoom();
                                        lines_.addClosing(indentation());
                                    });
        lines_.moveTo(body_);
        if (done && !ut::isAscii(body_) && ut::isUtf8(body_)) {
            report_.warn({.code = PiaCode::NotReadBack,
                          .expected = L"text that is not UTF-8 by chance",
                          .found = L"a body in the ANSI code page that reads as UTF-8"});
        }
        return done;
    }

private:
    std::size_t indentation() const { return std::min(walk_.depth(), lineLimit); }

    bool writeItem(const PiaItem& item) {
        makeRoom();
        const bool plain = readValue(
            item, [&](auto value) { return lines_.add(walk_.depth(), item, value); });
        if (plain) {
            return true;
        }
        lines_.moveTo(body_);
        return writeCarefully(item);
    }

    void makeRoom() {
        if (lines_.isFull()) {
            lines_.moveTo(body_);
        }
    }

    bool writeCarefully(const PiaItem& item) {
        const std::wstring_view name = item.name;
        const std::wstring value = valueOf(item);
        if (holds(name, L'\n') || holds(value, L'\n')) {
            return report_.fail({.code = PiaCode::LineBreakInValue,
                                 .path = walk_.pathOf(item),
                                 .found = value});
        }
        if (!nameReadsBack(name, item.type, walk_.depth()) ||
            !valueReadsBack(value, item.type) ||
            (item.type == PiaItemType::Block && walk_.depth() >= depthLimit)) {
            warn(PiaCode::NotReadBack, item);
        }
        const Frame frame = frameOf(item.type);
        const std::size_t start = body_.size();
        body_.append(indentation(), ' ');
        std::size_t room = lineLimit - indentation();
        std::size_t lost = append(name, room);
        appendFrame(frame.before, room);
        if (item.type == PiaItemType::Bin) {
            // Only the beginning of a binary value's line is bound to the limit.
            lost += ut::convertToAnsi(value, body_);
            body_.append(frame.after);
        } else {
            lost += append(value, room);
            if (body_.size() - start > PiaBodyLines::readSize) {
                warn(PiaCode::LineCut, item);
            }
        }
        body_.push_back('\n');
        if (cut_) {
            warn(PiaCode::LineCut, item);
            cut_ = false;
        }
        if (lost > 0) {
            warn(PiaCode::CharacterLost, item);
        }
        return true;
    }

    /// Appends what `room` UTF-16 units take of `text` and returns how many did not convert.
    std::size_t append(std::wstring_view text, std::size_t& room) {
        const std::size_t units = ut::utf16Length(text);
        if (units > room) {
            text = ut::utf16Prefix(text, room);
            room = 0;
            cut_ = true;
        } else {
            room -= units;
        }
        return ut::convertToAnsi(text, body_);
    }

    void appendFrame(std::string_view frame, std::size_t& room) {
        cut_ = cut_ || frame.size() > room;
        const std::string_view part = frame.substr(0, room);
        body_.append(part);
        room -= part.size();
    }

    void warn(PiaCode code, const PiaItem& item) {
        report_.warn({.code = code,
                      .path = walk_.pathOf(item),
                      .found = valueOf(item).substr(0, lineLimit)});
    }

    Walk walk_;
    PlainLines lines_;
    std::string& body_;
    PiaReport& report_;
    bool cut_ = false;
};

}  // namespace

bool piaWriteBody(const PiaBlock& root, std::string& body, PiaReport& report) {
    return FileBody(root, body, report).write();
}

std::string piaBodyText(const PiaBlock& block) {
    std::string text;
    Walk walk(block);
    walk.run(
        [&](const PiaItem& item) {
            const Frame frame = frameOf(item.type);
            text.append(walk.depth(), ' ').append(ut::encodeUtf8(item.name));
            text.append(frame.before).append(ut::encodeUtf8(valueOf(item)));
            text.append(frame.after).push_back('\n');
            return true;
        },
        [&] { text.append(walk.depth(), ' ').append("}\n"); });
    return text;
}

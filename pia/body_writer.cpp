#include "pia/body_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <deque>
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
            return reader(
                std::string_view(static_cast<const PiaBool&>(item).value ? "TRUE" : "FALSE"));
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
    return !name.empty() && std::none_of(name.begin(), name.end(), [&](wchar_t character) {
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

struct Name {
    std::wstring_view text;
    /// True when the text stays where it is until the body is written.
    bool isKept;
};

/// Collects lines that need no care: ASCII that fits and reads back as it is.
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
        std::array<char, slack> ascii;
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
    FileBody(std::string& body, PiaReport& report) : body_(body), report_(report) {}

    /// Number of open blocks.
    std::size_t depth() const { return depth_; }

    /// Adds the line of an item. False, with the reason in the report, at a line break.
    template <class Char>
    bool add(const Name& name, PiaItemType type, std::basic_string_view<Char> value) {
        if (lines_.isFull()) {
            lines_.moveTo(body_);
        }
        if (!lines_.add(depth_, name, type, value)) {
            lines_.moveTo(body_);
            onlyPlain_ = false;
            return addCarefully(name.text, type, std::wstring(value.begin(), value.end()));
        }
        return true;
    }

    /// Adds a number or flag that was formatted here.
    bool addFormatted(const Name& name, PiaItemType type, std::string_view value) {
        if (lines_.isFull()) {
            lines_.moveTo(body_);
        }
        return lines_.addFormatted(depth_, name, value) || add(name, type, value);
    }

    bool refuse(const Name& name, double number) {
        return report_.fail({.code = PiaCode::ValueInvalid,
                             .path = pathOf(name.text),
                             .expected = L"a finite number",
                             .found = ut::formatFixed(number, -1)});
    }

    bool open(const Name& name) {
        if (!add(name, PiaItemType::Block, std::string_view())) {
            return false;
        }
        if (depth_ == blockNames_.size()) {
            blockNames_.emplace_back();
        }
        blockNames_[depth_++] = name.text;
        return true;
    }

    void close() {
        --depth_;
        if (lines_.isFull()) {
            lines_.moveTo(body_);
        }
        lines_.addClosing(indentation());
    }

    /// Brings everything into the body.
    void finish() {
        lines_.moveTo(body_);
        if (!onlyPlain_ && !ut::isAscii(body_) && ut::isUtf8(body_)) {
            report_.warn({.code = PiaCode::NotReadBack,
                          .expected = L"text that is not UTF-8 by chance",
                          .found = L"a body in the ANSI code page that reads as UTF-8"});
        }
    }

private:
    std::size_t indentation() const { return std::min(depth_, lineLimit); }

    std::wstring pathOf(std::wstring_view name) const {
        std::wstring path;
        for (std::size_t level = 0; level < depth_; ++level) {
            path.append(blockNames_[level]).append(L"/");
        }
        return path.append(name);
    }

    bool addCarefully(std::wstring_view name, PiaItemType type, const std::wstring& value) {
        const auto warn = [&](PiaCode code) {
            report_.warn({.code = code, .path = pathOf(name), .found = value.substr(0, lineLimit)});
        };
        if (holds(name, L'\n') || holds(value, L'\n')) {
            return report_.fail(
                {.code = PiaCode::LineBreakInValue, .path = pathOf(name), .found = value});
        }
        if (!nameReadsBack(name, type, depth_) || !valueReadsBack(value, type) ||
            (type == PiaItemType::Block && depth_ >= depthLimit)) {
            warn(PiaCode::NotReadBack);
        }
        const Frame frame = frameOf(type);
        const std::size_t start = body_.size();
        body_.append(indentation(), ' ');
        std::size_t room = lineLimit - indentation();
        bool cut = false;
        std::size_t lost = append(name, room, cut);
        appendFrame(frame.before, room, cut);
        if (type == PiaItemType::Bin) {
            // Only the beginning of a binary value's line is bound to the limit.
            lost += ut::convertToAnsi(value, body_);
            body_.append(frame.after);
        } else {
            lost += append(value, room, cut);
            cut = cut || body_.size() - start > PiaBodyLines::readSize;
        }
        body_.push_back('\n');
        if (cut) {
            warn(PiaCode::LineCut);
        }
        if (lost > 0) {
            warn(PiaCode::CharacterLost);
        }
        return true;
    }

    /// Appends what `room` UTF-16 units take of `text` and returns how many did not convert.
    std::size_t append(std::wstring_view text, std::size_t& room, bool& cut) {
        const std::size_t units = ut::utf16Length(text);
        if (units > room) {
            text = ut::utf16Prefix(text, room);
            room = 0;
            cut = true;
        } else {
            room -= units;
        }
        return ut::convertToAnsi(text, body_);
    }

    void appendFrame(std::string_view frame, std::size_t& room, bool& cut) {
        cut = cut || frame.size() > room;
        const std::string_view part = frame.substr(0, room);
        body_.append(part);
        room -= part.size();
    }

    PlainLines lines_;
    std::string& body_;
    PiaReport& report_;
    std::size_t depth_ = 0;
    /// True while every line was ASCII.
    bool onlyPlain_ = true;
    /// Of the open blocks, and of some that were closed.
    std::vector<std::wstring> blockNames_;
};

}  // namespace

bool piaWriteBody(const PiaBlock& root, std::string& body, PiaReport& report) {
    FileBody file(body, report);
    const bool done = Walk(root).run(
        [&](const PiaItem& item) {
            const Name name{item.name, true};
            return item.type == PiaItemType::Block ? file.open(name)
                                                   : readValue(item, [&](auto value) {
                                                         return file.add(name, item.type, value);
                                                     });
        },
        [&] { file.close(); });
    file.finish();
    return done;
}

class PiaBodySink::State {
public:
    State(std::string& body, PiaReport& report) : file_(body, report) {
        levels_.emplace_back(*this, 0);
    }

    PiaSink& root() { return levels_.front(); }

    bool finish() {
        closeDownTo(0);
        file_.finish();
        return !failed_;
    }

private:
    /// The sink of the open block at one depth.
    class Level final : public PiaSink {
    public:
        Level(State& state, std::size_t depth) : state_(state), depth_(depth) {}

        using PiaSink::addBlock;
        using PiaSink::addDouble;
        using PiaSink::addString;

        bool addString(PiaKey key, std::wstring_view text) override {
            return add(kept(key), PiaItemType::Str, text);
        }
        bool addBool(PiaKey key, bool flag) override {
            return addFormatted(kept(key), PiaItemType::Bool, flag ? "TRUE" : "FALSE");
        }
        bool addBin(PiaKey key, std::wstring_view text) override {
            return add(kept(key), PiaItemType::Bin, text);
        }
        bool addNumber(PiaKey key, std::wstring_view text) override {
            return add(kept(key), PiaItemType::Num, text);
        }
        bool addInt(PiaKey key, int number) override {
            std::array<char, 12> digits;
            const char* end =
                std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
            return addFormatted(kept(key), PiaItemType::Num, {digits.data(), end});
        }
        bool addDouble(PiaKey key, double number, int precision) override {
            return addNumber(kept(key), number, precision);
        }
        PiaSink* addBlock(PiaKey key) override { return state_.open(depth_, kept(key)); }

    private:
        static Name kept(PiaKey key) { return {key.text(), true}; }

        template <class Char>
        bool add(const Name& name, PiaItemType type, std::basic_string_view<Char> value) {
            return state_.add(depth_, name, type, value);
        }
        bool addFormatted(const Name& name, PiaItemType type, std::string_view value) {
            return state_.addFormatted(depth_, name, type, value);
        }
        bool addNumber(const Name& name, double number, int precision) {
            return std::isfinite(number) ? addFormatted(name, PiaItemType::Num,
                                                        ut::formatFixedAscii(number, precision))
                                         : state_.refuse(depth_, name, number);
        }
        bool addStringNamed(std::wstring_view itemName, std::wstring_view text) override {
            return add({itemName, false}, PiaItemType::Str, text);
        }
        bool addDoubleNamed(std::wstring_view itemName, double number, int precision) override {
            return addNumber({itemName, false}, number, precision);
        }
        PiaSink* addBlockNamed(std::wstring_view itemName) override {
            return state_.open(depth_, {itemName, false});
        }

        State& state_;
        std::size_t depth_;
    };

    template <class Char>
    bool add(std::size_t depth, const Name& name, PiaItemType type,
             std::basic_string_view<Char> value) {
        closeDownTo(depth);
        failed_ = failed_ || !file_.add(name, type, value);
        return !failed_;
    }

    bool addFormatted(std::size_t depth, const Name& name, PiaItemType type,
                      std::string_view value) {
        closeDownTo(depth);
        failed_ = failed_ || !file_.addFormatted(name, type, value);
        return !failed_;
    }

    /// A number that no reader takes: writing it would make the document unreadable.
    bool refuse(std::size_t depth, const Name& name, double number) {
        closeDownTo(depth);
        failed_ = true;
        return file_.refuse(name, number);
    }

    PiaSink* open(std::size_t depth, const Name& name) {
        closeDownTo(depth);
        failed_ = failed_ || !file_.open(name);
        if (failed_) {
            return nullptr;
        }
        if (levels_.size() == file_.depth()) {
            levels_.emplace_back(*this, file_.depth());
        }
        return &levels_[file_.depth()];
    }

    void closeDownTo(std::size_t depth) {
        while (file_.depth() > depth) {
            file_.close();
        }
    }

    FileBody file_;
    /// Sinks by depth; a deque does not move them.
    std::deque<Level> levels_;
    bool failed_ = false;
};

PiaBodySink::PiaBodySink(std::string& body, PiaReport& report)
    : state_(std::make_unique<State>(body, report)) {}
PiaBodySink::~PiaBodySink() = default;
PiaSink& PiaBodySink::root() { return state_->root(); }
bool PiaBodySink::finish() { return state_->finish(); }

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

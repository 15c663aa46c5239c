#include "pia/body_writer.h"

#include <algorithm>
#include <array>
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

std::wstring_view valueOf(const PiaItem& item) {
    switch (item.type) {
    case PiaItemType::Bin:
        return static_cast<const PiaBin&>(item).value;
    case PiaItemType::Bool:
        return static_cast<const PiaBool&>(item).value ? L"TRUE" : L"FALSE";
    case PiaItemType::Str:
        return static_cast<const PiaStr&>(item).value;
    case PiaItemType::Num:
        return static_cast<const PiaNum&>(item).value;
    case PiaItemType::Block:
        break;
    }
    return {};
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

class FileBody {
public:
    FileBody(const PiaBlock& root, std::string& body, PiaReport& report)
        : walk_(root), body_(body), report_(report) {}

    bool write() {
        const bool done = walk_.run([this](const PiaItem& item) { return writeItem(item); },
                                    [this] {
                                        body_.append(indentation(), ' ').append("}\n");
                                    });
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
        const std::wstring_view name = item.name;
        const std::wstring_view value = valueOf(item);
        if (holds(name, L'\n') || holds(value, L'\n')) {
            return report_.fail({.code = PiaCode::LineBreakInValue,
                                 .path = walk_.pathOf(item),
                                 .found = std::wstring(value)});
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
                      .found = std::wstring(valueOf(item).substr(0, lineLimit))});
    }

    Walk walk_;
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

// The fast way through a body: lines that hold nothing but what nearly all lines hold.

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <limits>
#include <utility>

#include "pia/arena.h"
#include "pia/body_reader.h"

namespace {

/// Lines of a block that a sibling can follow.
constexpr std::size_t mostSeenLines = 64;

/// Marks the characters at which a name ends or the careful functions take over.
constexpr std::array<bool, 256> endsName = [] {
    std::array<bool, 256> marks{};
    for (const char character : {' ', '=', '{', '}', '\r', '\n'}) {
        marks[static_cast<unsigned char>(character)] = true;
    }
    return marks;
}();

std::uint64_t load8(const char* bytes) {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// The next line feed, or null.
const char* findFeed(const char* from, const char* end) {
    return static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
}

/// True when `at` begins with `beginning`, which lies before it in the body and is not empty. Both
/// are followed by eight bytes or more.
bool beginsWith(const char* at, std::string_view beginning) {
    const char* expected = beginning.data();
    const std::size_t size = beginning.size();
    const auto differAt = [&](std::size_t offset) {
        return load8(at + offset) ^ load8(expected + offset);
    };
    if (size < 8) {
        const std::uint64_t counted = ~std::uint64_t{0} >> (64 - 8 * size);
        return (differAt(0) & counted) == 0;
    }
    // Words that overlap, so that there is no loop to leave.
    if (size <= 16) {
        return (differAt(0) | differAt(size - 8)) == 0;
    }
    if (size <= 32) {
        return (differAt(0) | differAt(8) | differAt(size - 16) | differAt(size - 8)) == 0;
    }
    return std::memcmp(at, expected, size) == 0;
}

/// True when the line at `at`, which ends at `end` or later, begins like that.
bool isLine(const char* at, const char* end, std::string_view beginning) {
    return end - at >= static_cast<std::ptrdiff_t>(beginning.size() + 8) &&
           beginsWith(at, beginning);
}

bool isWord(std::string_view text, std::string_view word) {
    if (text.size() != word.size()) {
        return false;
    }
    for (std::size_t index = 0; index < word.size(); ++index) {
        if ((text[index] | ' ') != word[index]) {
            return false;
        }
    }
    return true;
}

/// True when `text`, which is not empty, is `number` in decimal, with or without zeros in front.
bool spells(std::string_view text, std::size_t number) {
    if (text.size() > std::numeric_limits<std::size_t>::digits10) {
        return false;
    }
    std::size_t spelt = 0;
    for (const char character : text) {
        if (character < '0' || character > '9') {
            return false;
        }
        spelt = spelt * 10 + static_cast<std::size_t>(character - '0');
    }
    return spelt == number;
}

/// The type of a value that is not empty. A binary value may go on over many lines.
inline PiaItemType typeOf(std::string_view value) {
    if (value.front() >= '0' && value.front() <= '9') {
        return PiaItemType::Num;
    }
    switch (value.front()) {
        case '"':
            return PiaItemType::Str;
        case '\\':
            return PiaItemType::Bin;
        case 't':
        case 'T':
            return isWord(value, "true") ? PiaItemType::Bool : PiaItemType::Num;
        case 'f':
        case 'F':
            return isWord(value, "false") ? PiaItemType::Bool : PiaItemType::Num;
        default:
            return PiaItemType::Num;
    }
}

}  // namespace

bool PiaBodyReader::takePlainLine() {
    Level& current = level();
    if (current.follows && current.next < current.sibling.size()) {
        if ((current.refills && refillItems(current)) || takeLikeSibling(current)) {
            return true;
        }
        stopFollowing(current);
    }
    return takeNamedLine(current);
}

/// Gives an item another value; false when the value is not of its type.
inline bool PiaBodyReader::refill(PiaItem& item, PiaItemType type, std::string_view value,
                                  std::uint64_t line) {
    if (typeOf(value) != type) {
        return false;
    }
    if (type == PiaItemType::Bool) {
        static_cast<PiaBool&>(item).value = (value.front() | ' ') == 't';
    } else {
        PiaAccess::borrow(static_cast<PiaTextItem&>(item).value,
                          type == PiaItemType::Str ? value.substr(1) : value);
    }
    PiaAccess::setLine(item, line);
    return true;
}

/// Takes lines of items as long as they follow the sibling. False when there was none.
bool PiaBodyReader::refillItems(Level& current) {
    const std::size_t left =
        std::min(current.sibling.size() - current.next, limits_.items - itemCount_);
    const SeenLine* const first = current.sibling.data() + current.next;
    const SeenLine* line = first;
    PiaItem* const* item = PiaAccess::itemsToRefill(*current.block);
    std::uint64_t number = lines_.line();
    const char* const end = lines_.end();
    const char* last = nullptr;
    const char* start = lines_.position();
    for (; line != first + left; ++line, ++item) {
        if (line->type == PiaItemType::Block || !isLine(start, end, line->beginning)) {
            break;
        }
        const char* value = start + line->beginning.size();
        const char* feed = findFeed(value, end);
        if (feed == nullptr ||
            feed - start >= static_cast<std::ptrdiff_t>(PiaBodyLines::readSize)) {
            break;
        }
        const char* valueEnd = feed != value && feed[-1] == '\r' ? feed - 1 : feed;
        const std::string_view text(value, static_cast<std::size_t>(valueEnd - value));
        assert((*item)->name.c_str() == line->name.c_str() && (*item)->type == line->type);
        if (text.empty() || !refill(**item, line->type, text, ++number)) {
            break;
        }
        last = std::exchange(start, feed + 1);
    }
    const auto taken = static_cast<std::size_t>(line - first);
    if (taken > 0) {
        PiaAccess::refilled(*current.block, taken);
        current.next += taken;
        itemCount_ += taken;
        lines_.takeLines(taken, last, start);
    }
    return taken > 0;
}

bool PiaBodyReader::takeLikeSibling(Level& current) {
    const SeenLine& line = current.sibling[current.next];
    const char* start = lines_.position();
    if (!isLine(start, lines_.end(), line.beginning)) {
        return false;
    }
    const SeenLine same{{start, line.beginning.size()}, line.type, line.name};
    return line.type == PiaItemType::Block
               ? takeOpening(current, same, Known::FollowsSibling)
               : takeItem(current, start + line.beginning.size(), same, Known::FollowsSibling);
}

bool PiaBodyReader::takeNamedLine(Level& current) {
    const char* start = lines_.position();
    const char* end = lines_.end();
    const char* name = start;
    while (name != end && *name == ' ') {
        ++name;
    }
    const char* stop = name;
    while (stop != end && !endsName[static_cast<unsigned char>(*stop)]) {
        ++stop;
    }
    if (stop == end) {
        return false;
    }
    if (stop == name) {
        const bool closes = *stop == '}' && insideBlock() && end - stop > 1 && stop[1] == '\n';
        if (closes) {
            lines_.takeLine(stop + 2);
            leave();
        }
        return closes;
    }
    if (*stop != '=' && *stop != '{') {
        return false;
    }
    const std::string_view nameText(name, static_cast<std::size_t>(stop - name));
    if (nameText.size() > PiaBodyLines::readSize) {
        return false;
    }
    const PiaKey key = arena_.copyName(nameText);
    const std::string_view beginning(start, static_cast<std::size_t>(stop + 1 - start));
    current.counts = current.counts && spells(nameText, current.block->items.size());
    const Known known = current.counts ? Known::IsNew : Known::Nothing;
    return *stop == '=' ? takeItem(current, stop + 1, {beginning, PiaItemType::Num, key}, known)
                        : takeOpening(current, {beginning, PiaItemType::Block, key}, known);
}

bool PiaBodyReader::takeItem(Level& current, const char* value, const SeenLine& line, Known known) {
    const char* feed = findFeed(value, lines_.end());
    if (feed == nullptr ||
        feed - line.beginning.data() >= static_cast<std::ptrdiff_t>(PiaBodyLines::readSize)) {
        return false;
    }
    const char* valueEnd = feed != value && feed[-1] == '\r' ? feed - 1 : feed;
    const std::string_view text(value, static_cast<std::size_t>(valueEnd - value));
    if (text.empty() || itemCount_ == limits_.items) {
        return false;
    }
    const PiaItemType type = typeOf(text);
    if (type == PiaItemType::Bin || (known == Known::FollowsSibling && type != line.type)) {
        return false;
    }
    SeenLine typed = line;
    typed.type = type;
    if (!append(current, typed, makePlain(line.name, type, text), known)) {
        return false;
    }
    lines_.takeLine(feed + 1);
    return true;
}

bool PiaBodyReader::takeOpening(Level& current, const SeenLine& line, Known known) {
    const char* feed = line.beginning.data() + line.beginning.size();
    if (feed == lines_.end() || *feed != '\n' || line.beginning.size() >= PiaBodyLines::readSize ||
        depth_ >= limits_.depth || itemCount_ == limits_.items) {
        return false;
    }
    PiaBlock* block = arena_.makeBlock(line.name);
    if (!append(current, line, block, known)) {
        return false;
    }
    lines_.takeLine(feed + 1);
    enter(block);
    return true;
}

/// Adds an item to the current block; false when it may not be added.
bool PiaBodyReader::append(Level& current, const SeenLine& line, PiaItem* item, Known known) {
    if (known == Known::FollowsSibling) {
        PiaAccess::append(*current.block, item);
        ++current.next;
        current.counts = false;
    } else if (known == Known::IsNew) {
        PiaAccess::append(*current.block, item);
        current.records = false;
    } else {
        if (!current.block->addItem(item)) {
            return false;
        }
        if (current.records && current.seen.size() < mostSeenLines) {
            current.seen.push_back(line);
        }
    }
    PiaAccess::setLine(*item, lines_.line() + 1);
    ++itemCount_;
    return true;
}

PiaItem* PiaBodyReader::makePlain(PiaKey name, PiaItemType type, std::string_view value) {
    switch (type) {
        case PiaItemType::Str:
            return arena_.makeBorrowing<PiaStr>(name, value.substr(1));
        case PiaItemType::Bool:
            return arena_.make<PiaBool>(name, (value.front() | ' ') == 't');
        default:
            return arena_.makeBorrowing<PiaNum>(name, value);
    }
}

void PiaBodyReader::stopFollowing(Level& level) {
    level.seen.assign(level.sibling.begin(),
                      level.sibling.begin() + static_cast<std::ptrdiff_t>(level.next));
    level.follows = false;
    level.records = true;
}

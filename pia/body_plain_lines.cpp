// The fast way through a body: lines that hold nothing but what nearly all lines hold.

#include <array>
#include <bit>
#include <charconv>
#include <cstring>

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

/// The next line feed, or null. Values are short, so that a call of memchr would cost more.
const char* findFeed(const char* from, const char* end) {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t highs = 0x8080808080808080U;
    for (; end - from >= 8; from += 8) {
        const std::uint64_t differences = load8(from) ^ (ones * '\n');
        const std::uint64_t zeros = (differences - ones) & ~differences & highs;
        if (zeros != 0) {
            return from + std::countr_zero(zeros) / 8;
        }
    }
    for (; from != end; ++from) {
        if (*from == '\n') {
            return from;
        }
    }
    return nullptr;
}

/// True when `at`, which has more bytes than `beginning`, begins with it.
bool beginsWith(const char* at, std::string_view beginning) {
    const char* expected = beginning.data();
    std::size_t left = beginning.size();
    if (left < 8) {
        return std::memcmp(at, expected, left) == 0;
    }
    for (; left > 8; left -= 8, at += 8, expected += 8) {
        if (load8(at) != load8(expected)) {
            return false;
        }
    }
    // The last eight bytes, some of which may have been compared already.
    return load8(at + left - 8) == load8(expected + left - 8);
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

/// True when `text` is `number` in decimal.
bool spells(std::string_view text, std::size_t number) {
    std::array<char, 20> digits;
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return text == std::string_view(digits.data(), end);
}

/// The type of a value that is not empty. A binary value may go on over many lines.
PiaItemType typeOf(std::string_view value) {
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
        if (takeLikeSibling(current)) {
            return true;
        }
        stopFollowing(current);
    }
    return takeNamedLine(current);
}

bool PiaBodyReader::takeLikeSibling(Level& current) {
    const SeenLine& line = current.sibling[current.next];
    const char* start = lines_.position();
    if (lines_.end() - start <= static_cast<std::ptrdiff_t>(line.beginning.size()) ||
        !beginsWith(start, line.beginning)) {
        return false;
    }
    const SeenLine same{{start, line.beginning.size()}, line.type, line.name, line.nameClass};
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
    // Numbers name the entries of lists: they hardly repeat.
    const bool isNumber = *name >= '0' && *name <= '9';
    const PiaKey key = isNumber ? arena_.copyName(nameText) : names_.intern(nameText);
    const std::string_view beginning(start, static_cast<std::size_t>(stop + 1 - start));
    current.counts = current.counts && isNumber && spells(nameText, current.block->items.size());
    const Known known = current.counts ? Known::IsNew : Known::Nothing;
    return *stop == '=' ? takeItem(current, stop + 1, {beginning, PiaItemType::Num, key, 0}, known)
                        : takeOpening(current, {beginning, PiaItemType::Block, key, 0}, known);
}

bool PiaBodyReader::takeItem(Level& current, const char* value, const SeenLine& line,
                             Known known) {
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
        current.block->append(item, line.nameClass);
        ++current.next;
        current.counts = false;
    } else if (known == Known::IsNew) {
        current.block->append(item, PiaBlock::classOf(line.name.text(), line.type));
        current.records = false;
    } else {
        if (!current.block->addItem(item)) {
            return false;
        }
        if (current.records && current.seen.size() < mostSeenLines) {
            current.seen.push_back({line.beginning, line.type, line.name,
                                    PiaBlock::classOf(line.name.text(), line.type)});
        }
    }
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

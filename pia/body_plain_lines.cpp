// The fast way through a body: lines that hold nothing but what nearly all lines hold.

#include <array>
#include <bit>
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
               ? takeOpening(current, same, true)
               : takeItem(current, start + line.beginning.size(), same, true);
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
    return *stop == '='
               ? takeItem(current, stop + 1, {beginning, PiaItemType::Num, key, 0}, false)
               : takeOpening(current, {beginning, PiaItemType::Block, key, 0}, false);
}

/// Takes an item whose value begins at `value`. When it `isNew` it must also be of the type that
/// the line says.
bool PiaBodyReader::takeItem(Level& current, const char* value, const SeenLine& line, bool isNew) {
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
    if (type == PiaItemType::Bin || (isNew && type != line.type)) {
        return false;
    }
    PiaItem* item = makePlain(line.name, type, text);
    if (isNew) {
        current.block->append(item, line.nameClass);
        ++current.next;
    } else {
        if (!current.block->addItem(item)) {
            return false;
        }
        record(current, {line.beginning, type, line.name, PiaBlock::classOf(line.name.text(), type)});
    }
    ++itemCount_;
    lines_.takeLine(feed + 1);
    return true;
}

bool PiaBodyReader::takeOpening(Level& current, const SeenLine& line, bool isNew) {
    const char* feed = line.beginning.data() + line.beginning.size();
    if (feed == lines_.end() || *feed != '\n' || line.beginning.size() >= PiaBodyLines::readSize ||
        depth_ >= limits_.depth || itemCount_ == limits_.items) {
        return false;
    }
    PiaBlock* block = arena_.makeBlock(line.name);
    if (isNew) {
        current.block->append(block, line.nameClass);
        ++current.next;
    } else {
        if (!current.block->addItem(block)) {
            return false;
        }
        record(current, {line.beginning, line.type, line.name,
                         PiaBlock::classOf(line.name.text(), line.type)});
    }
    ++itemCount_;
    lines_.takeLine(feed + 1);
    enter(block);
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

void PiaBodyReader::record(Level& level, const SeenLine& line) {
    if (level.records && level.seen.size() < mostSeenLines) {
        level.seen.push_back(line);
    }
}

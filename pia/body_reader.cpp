#include "pia/body_reader.h"

#include <algorithm>

#include <platen/utcore.h>
#include "pia/arena.h"

namespace {

template <class Char>
using Text = std::basic_string_view<Char>;

template <class Char>
constexpr Char as(char character) {
    return static_cast<Char>(character);
}

template <class Char>
std::wstring widen(Text<Char> text) {
    return {text.begin(), text.end()};
}

/// True when `text` is `word` (lower case), ignoring the case of ASCII letters.
template <class Char>
bool isWord(Text<Char> text, std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](Char character, char letter) {
                          return character == as<Char>(letter) ||
                                 character == static_cast<Char>(letter - 'a' + 'A');
                      });
}

template <class Char>
bool isBlank(Text<Char> text) {
    return text.find_first_not_of(as<Char>(' ')) == Text<Char>::npos;
}

}  // namespace

PiaBodyReader::PiaBodyReader(std::string_view body, bool isAscii, PiaEncoding encoding,
                             const PiaLimits& limits, PiaTree& tree, PiaReport& report,
                             PiaEntryTaker* entries)
    : lines_(body),
      decoder_(encoding),
      asciiBody_(isAscii),
      limits_(limits),
      arena_(PiaAccess::arenaOf(tree)),
      report_(report),
      entries_(entries) {
    levels_.emplace_back().block = &tree.root();
    PiaAccess::setLine(tree.root(), 1);
}

bool PiaBodyReader::read() {
    const bool plainBody = asciiBody_ && !lines_.holdsNul();
    std::string_view piece;
    while (true) {
        if (plainBody && lines_.atLineStart() && takePlainLine()) {
            continue;
        }
        if (!next(piece)) {
            break;
        }
        if (piece.empty()) {
            continue;
        }
        if (isPlain(piece) ? !readLine(piece) : !readLine(std::wstring_view(decoded(piece)))) {
            return false;
        }
    }
    if (insideBlock()) {
        PiaFinding finding = here(PiaCode::MissingClosingBrace);
        finding.path = pathOf({});
        finding.found = std::to_wstring(depth_) + L" open";
        report_.warn(std::move(finding));
        if (insideEntry()) {
            handOver(*levels_[entryDepth].block);
        }
    }
    return true;
}

template <class Char>
bool PiaBodyReader::readLine(Text<Char> line) {
    const std::size_t equals = line.find(as<Char>('='));
    if (equals != Text<Char>::npos) {
        if (insideBlock() && line.substr(0, equals).find(as<Char>('}')) != Text<Char>::npos) {
            return fail(PiaCode::BraceBeforeEquals, line);
        }
        return readItem(line, equals);
    }
    if (insideBlock() && line.find(as<Char>('}')) != Text<Char>::npos) {
        closeBlock(line);
        return true;
    }
    const std::size_t brace = line.find(as<Char>('{'));
    if (brace != Text<Char>::npos) {
        return openBlock(line, brace);
    }
    return fail(PiaCode::LineInvalid, line, L"name=value, name{ or }");
}

template <class Char>
Text<Char> PiaBodyReader::nameIn(Text<Char> text) {
    const std::size_t first = text.find_first_not_of(as<Char>(' '));
    if (first == Text<Char>::npos) {
        fail(PiaCode::NameEmpty, text);
        return {};
    }
    const Text<Char> name = text.substr(first);
    const std::size_t end = name.find(as<Char>(' '));
    if (end != Text<Char>::npos && !isBlank(name.substr(end))) {
        fail(PiaCode::NameHasSpace, name);
        return {};
    }
    return name.substr(0, end);
}

template <class Char>
bool PiaBodyReader::readItem(Text<Char> line, std::size_t equals) {
    const Text<Char> nameText = nameIn(line.substr(0, equals));
    if (nameText.empty() || !mayAddItem()) {
        return false;
    }
    const Text<Char> value = line.substr(equals + 1);
    if (value.empty()) {
        return fail(PiaCode::ValueEmpty, line);
    }
    const PiaKey name = arena_.copyName(nameText);
    if (value.front() == as<Char>('\\')) {
        return readBin(name, value.substr(1));
    }
    warnOfSplit();
    if (value.front() == as<Char>('"')) {
        return add(arena_.makeCopying<PiaStr>(name, value.substr(1)));
    }
    if (isWord(value, "true")) {
        return add(arena_.make<PiaBool>(name, true));
    }
    if (isWord(value, "false")) {
        return add(arena_.make<PiaBool>(name, false));
    }
    return add(arena_.makeCopying<PiaNum>(name, value));
}

template <class Char>
bool PiaBodyReader::readBin(PiaKey name, Text<Char> begin) {
    const std::uint64_t line = lines_.line();
    std::wstring value;
    // True when `text` ends the value.
    const auto take = [&](auto text) {
        using Piece = decltype(text);
        const std::size_t end = text.find(as<typename Piece::value_type>('\\'));
        const Piece part = text.substr(0, end);
        value.append(part.begin(), part.end());
        if (end == Piece::npos) {
            return false;
        }
        if (end + 1 < text.size()) {
            report_.warn(here(PiaCode::TextIgnored));
        }
        return true;
    };
    bool ended = take(begin);
    while (!ended) {
        std::string_view piece;
        if (!next(piece)) {
            PiaFinding finding = here(PiaCode::BinUnterminated);
            finding.path = pathOf(name.text());
            return report_.fail(std::move(finding));
        }
        ended = isPlain(piece) ? take(piece) : take(std::wstring_view(decoded(piece)));
    }
    return add(arena_.makeCopying<PiaBin>(name, std::wstring_view(value)), line);
}

template <class Char>
bool PiaBodyReader::openBlock(Text<Char> line, std::size_t brace) {
    const Text<Char> nameText = nameIn(line.substr(0, brace));
    if (nameText.empty() || !mayAddItem()) {
        return false;
    }
    if (depth_ >= limits_.depth) {
        return fail(PiaCode::TooDeep, line, L"at most " + std::to_wstring(limits_.depth));
    }
    if (!isBlank(line.substr(brace + 1))) {
        report_.warn(here(PiaCode::TextIgnored));
    }
    warnOfSplit();
    PiaBlock* block = arena_.makeBlock(arena_.copyName(nameText));
    if (!add(block)) {
        return false;
    }
    enter(block);
    return true;
}

template <class Char>
void PiaBodyReader::closeBlock(Text<Char> line) {
    const std::size_t brace = line.find(as<Char>('}'));
    if (!isBlank(line.substr(0, brace)) || !isBlank(line.substr(brace + 1))) {
        report_.warn(here(PiaCode::TextIgnored));
    }
    leave();
}

bool PiaBodyReader::add(PiaItem* item, std::uint64_t line) {
    PiaAccess::setLine(*item, line);
    if (!level().block->addItem(item)) {
        // The arena keeps the memory of the item, and nothing in it has to be freed.
        PiaFinding finding = here(PiaCode::Duplicate);
        finding.path = pathOf(item->name);
        return report_.fail(std::move(finding));
    }
    // A line that is not plain ends what a later sibling could follow.
    level().follows = false;
    level().records = false;
    level().counts = false;
    return true;
}

void PiaBodyReader::enter(PiaBlock* block) {
    if (++depth_ == levels_.size()) {
        levels_.emplace_back();
    }
    Level& entered = level();
    entered.block = block;
    entered.seen.clear();
    entered.next = 0;
    entered.follows = !entered.sibling.empty();
    entered.records = !entered.follows;
    entered.counts = true;
    entered.refills = false;
    if (entries_ != nullptr) {
        enterList(entered);
    }
}

void PiaBodyReader::enterList(Level& entered) {
    if (depth_ + 1 == entryDepth) {
        insideList_ = entered.block->name == entries_->list().text();
        if (levels_.size() > entryDepth) {
            // Its items are not at hand.
            levels_[entryDepth].sibling.clear();
        }
    } else if (depth_ == entryDepth && insideList_) {
        PiaAccess::takeList(*entered.block, entryItems_);
        entered.refills = true;
        entryHoldsBlocks_ = false;
    } else {
        entryHoldsBlocks_ = true;
    }
}

void PiaBodyReader::handOver(PiaBlock& entry) {
    entries_->take(entry);
    entryItems_ = PiaAccess::giveList(entry, entryHoldsBlocks_);
}

void PiaBodyReader::leave() {
    Level& left = level();
    if (!left.follows) {
        left.sibling.swap(left.seen);
    }
    if (depth_ == entryDepth && insideList_) {
        handOver(*left.block);
    }
    --depth_;
}

bool PiaBodyReader::mayAddItem() {
    if (++itemCount_ <= limits_.items) {
        return true;
    }
    return fail(PiaCode::TooManyItems, std::string_view(),
                L"at most " + std::to_wstring(limits_.items));
}

bool PiaBodyReader::isPlain(std::string_view piece) const {
    return asciiBody_ || ut::isAscii(piece);
}

const std::wstring& PiaBodyReader::decoded(std::string_view piece) {
    decoder_.decode(piece, decodedLine_, lines_, report_);
    return decodedLine_;
}

void PiaBodyReader::warnOfSplit() {
    if (lines_.lineGoesOn()) {
        report_.warn(here(PiaCode::LineSplit));
    }
}

std::wstring PiaBodyReader::pathOf(std::wstring_view name) const {
    std::wstring path;
    for (std::size_t depth = 1; depth <= depth_; ++depth) {
        path.append(levels_[depth].block->name).append(L"/");
    }
    path.append(name);
    if (name.empty() && !path.empty()) {
        path.pop_back();
    }
    return path;
}

PiaFinding PiaBodyReader::here(PiaCode code) const {
    return {.code = code, .offset = lines_.offset(), .line = lines_.line()};
}

template <class Char>
bool PiaBodyReader::fail(PiaCode code, Text<Char> found, std::wstring expected) {
    PiaFinding finding = here(code);
    finding.path = pathOf({});
    finding.found = widen(found);
    finding.expected = std::move(expected);
    return report_.fail(std::move(finding));
}

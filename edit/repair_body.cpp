#include "edit/repair_body.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "edit/repair_salvage.h"
#include "pia/body_lines.h"

namespace platen {
namespace {

using repair_lines::kindOf;
using repair_lines::Line;
using repair_lines::LineKind;

constexpr std::size_t readSize = PiaBodyLines::readSize;
/// Items that had a name twice are kept for the document to decide, but not without end. Marks of
/// as many bytes make their names longer at most.
constexpr std::size_t mostDuplicates = 200;
/// Stands behind such names: no writer of the format makes it.
constexpr char duplicateMark = '\x1A';

bool isBlank(std::string_view text) { return text.find_first_not_of(' ') == text.npos; }

/// A text without the spaces around it.
std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// Whether this can stand before a "=" or "{", spaces around it aside.
bool isName(std::string_view text) {
    text = trimmed(text);
    return !text.empty() && text.find_first_of(" ={}") == text.npos;
}

/// Whether a text that follows another in one line would be a line by itself.
bool isLine(std::string_view text) {
    const std::size_t mark = text.find_first_of("={}");
    return mark != text.npos &&
           (text[mark] == '}' ? isBlank(text.substr(0, mark)) : isName(text.substr(0, mark)));
}

bool isNumber(std::string_view name) {
    return !name.empty() && name.find_first_not_of("0123456789") == name.npos;
}

bool holdsMarks(std::string_view text) {
    return text.find_first_of(std::string_view("={}\"\0", 5)) != text.npos;
}

bool equalNoCase(std::string_view text, std::string_view word) {
    return std::ranges::equal(text, word, [](char character, char letter) {
        return character == letter || character == letter - 'a' + 'A';
    });
}

}  // namespace

BodySalvage::BodySalvage(std::string_view body, bool torn, const PiaLimits& limits,
                         RepairNotes& notes)
    : lines_(repair_lines::linesOf(body)),
      encoding_(body),
      indented_(repair_lines::isIndented(lines_)),
      torn_(torn),
      limits_(limits),
      notes_(notes),
      lookAhead_(lines_.size() * 4) {}

SalvagedBody BodySalvage::run() {
    for (; index_ < lines_.size() && !full_; ++index_) {
        takeLine(lines_[index_]);
    }
    index_ = lines_.empty() ? 0 : lines_.size() - 1;
    endLeftOut();
    if (depth() > 0) {
        notes_.assume({.code = RepairCode::ClosingBraceAtEnd,
                       .line = lineNumber(),
                       .path = pathOf({}),
                       .taken = std::to_wstring(depth()) + L" closed"});
    }
    while (depth() > 0) {
        close();
    }
    return std::move(result_);
}

std::wstring BodySalvage::pathOf(std::string_view name) const {
    std::string path;
    for (std::size_t level = 1; level < levels_.size(); ++level) {
        path.append(levels_[level].name).append("/");
    }
    path.append(name);
    if (name.empty() && !path.empty()) {
        path.pop_back();
    }
    return encoding_.decoded(path);
}

void BodySalvage::assume(RepairCode code, std::string_view found, std::string_view taken,
                         std::string_view name) {
    if (!notes_.hasRoom()) {
        notes_.assume({.code = code});
        return;
    }
    notes_.assume({.code = code,
                   .line = lineNumber(),
                   .path = pathOf(name),
                   .found = encoding_.decoded(found),
                   .taken = encoding_.decoded(taken)});
}

void BodySalvage::lose(Loss::Unit unit, std::uint64_t count, std::string_view text) {
    if (!notes_.hasRoom()) {
        notes_.lose({.unit = unit, .count = count, .line = lineNumber()});
        return;
    }
    notes_.lose({.unit = unit,
                 .count = count,
                 .line = lineNumber(),
                 .path = pathOf({}),
                 .text = encoding_.decoded(text)});
}

void BodySalvage::leaveOut(RepairCode code, std::string_view text) {
    assume(code, text);
    lose(Loss::Unit::Lines, 1, text);
}

void BodySalvage::emit(std::string_view text) {
    result_.text.append(text).push_back('\n');
    result_.sources.push_back(static_cast<std::uint32_t>(lineNumber()));
}

void BodySalvage::close() {
    levels_.pop_back();
    emit(std::string(std::min(depth(), readSize - 1), ' ') + '}');
}

const repair_lines::Line* BodySalvage::nextLine() const {
    for (std::size_t next = index_ + 1; next < lines_.size(); ++next) {
        if (!lines_[next].isBlank()) {
            return &lines_[next];
        }
    }
    return nullptr;
}

void BodySalvage::takeLine(const Line& line) {
    if (line.text.empty()) {
        return;
    }
    if (torn_ && !line.ends) {
        leaveOut(RepairCode::LastLineTorn, line.text);
        return;
    }
    std::string cleaned;
    std::string_view text = line.text;
    if (!encoding_.isClean(text)) {
        cleaned = encoding_.cleaned(text);
        assume(RepairCode::BytesDropped, text, cleaned);
        lose(Loss::Unit::Bytes, text.size() - cleaned.size(), text);
        text = cleaned;
    }
    if (isBlank(text)) {
        if (text.size() == line.text.size()) {
            assume(RepairCode::BlankLine, {});
        }
        return;
    }
    if (isLeftOut(text) || !followIndentation({text, line.ends})) {
        return;
    }
    for (std::string_view rest = shortened(text); !rest.empty() && !full_;) {
        rest = take(rest);
    }
}

std::string_view BodySalvage::shortened(std::string_view text) {
    const std::size_t equals = text.find('=');
    const bool isBinary = equals < readSize - 1 && text.substr(equals + 1).starts_with('\\');
    if (text.size() < readSize || isBinary) {
        return text;
    }
    const std::size_t end = encoding_.cutBefore(text, readSize);
    if (end < text.size()) {
        assume(RepairCode::LineTooLong, text.substr(end), text.substr(0, end));
        lose(Loss::Unit::Bytes, text.size() - end, text.substr(end));
    } else if (equals != text.npos) {
        assume(RepairCode::LineFull, text, text);
    }
    return text.substr(0, end);
}

std::string_view BodySalvage::take(std::string_view text) {
    const std::size_t equals = text.find('=');
    const std::size_t brace = text.find_first_of("{}");
    if (brace < equals) {
        const std::string_view rest = text.substr(brace + 1);
        const bool isAlone = equals == text.npos;
        const bool divides = !isAlone && isLine(rest);
        if (text[brace] == '}' && (isAlone || divides)) {
            return takeClosing(text, brace);
        }
        if (text[brace] == '{' && isName(text.substr(0, brace)) &&
            (isAlone || (divides && rest.starts_with(' ')))) {
            return takeOpening(text, brace);
        }
        if (text[brace] == '}' && depth() > 0) {
            leaveOut(RepairCode::LineInvalid, text);
            return {};
        }
    }
    if (equals == text.npos) {
        takeOther(text);
        return {};
    }
    return takeItem(text, equals);
}

std::string_view BodySalvage::behind(std::string_view rest) {
    if (isBlank(rest)) {
        return {};
    }
    if (isLine(rest)) {
        assume(RepairCode::LinesJoined, rest);
        return rest;
    }
    assume(RepairCode::TextDropped, rest);
    lose(Loss::Unit::Bytes, rest.size(), rest);
    return {};
}

std::string_view BodySalvage::takeClosing(std::string_view text, std::size_t brace) {
    const std::string_view before = text.substr(0, brace);
    if (!isBlank(before)) {
        if (indented_) {
            // A block ends in a line of its own; this was another line.
            leaveOut(RepairCode::LineInvalid, text);
            return {};
        }
        assume(RepairCode::TextDropped, before);
        lose(Loss::Unit::Bytes, before.size(), before);
    }
    if (depth() == 0) {
        assume(RepairCode::ClosingBraceSurplus, text);
    } else {
        close();
    }
    return behind(text.substr(brace + 1));
}

std::string_view BodySalvage::takeOpening(std::string_view text, std::size_t brace) {
    open(text.substr(0, brace));
    return leftOutDepth_ == 0 ? behind(text.substr(brace + 1)) : std::string_view();
}

void BodySalvage::takeOther(std::string_view text) {
    const Line* next = nextLine();
    const std::size_t indentation = text.find_first_not_of(' ');
    constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    const std::string_view word = text.substr(indentation);
    const std::string_view name = word.substr(0, word.find_first_not_of(letters));
    if (indented_ && next != nullptr && !name.empty() && indentation == depth() &&
        next->indentation() == indentation + 1 && kindOf(next->text) != LineKind::Closing) {
        assume(RepairCode::OpeningBraceMissing, text, name);
        open(std::string(indentation, ' ').append(name));
    } else {
        leaveOut(RepairCode::LineInvalid, text);
    }
}

void BodySalvage::open(std::string_view indentedName) {
    const std::string_view name = trimmed(indentedName);
    if (!mayAddItem()) {
        return;
    }
    if (depth() >= limits_.depth) {
        assume(RepairCode::TooDeep, name);
        beginLeftOut(indentedName.find_first_not_of(' '));
        return;
    }
    const std::string key = "{" + std::string(name);
    if (levels_.back().items.contains(key)) {
        const std::optional<std::string> other =
            name.size() + mostDuplicates < readSize ? markedName(name, '{') : std::nullopt;
        if (!other) {
            assume(RepairCode::DuplicateDropped, name, {}, name);
            beginLeftOut(indentedName.find_first_not_of(' '));
            return;
        }
        emit(*other + '{');
        levels_.push_back({*other});
        return;
    }
    levels_.back().items.emplace(key, std::string());
    emit(std::string(indentedName) + '{');
    levels_.push_back({std::string(name)});
}

std::string_view BodySalvage::takeItem(std::string_view text, std::size_t equals) {
    const std::string_view value = text.substr(equals + 1);
    std::string name(trimmed(text.substr(0, equals)));
    if (name.empty() || value.empty()) {
        leaveOut(RepairCode::LineInvalid, text);
        return {};
    }
    std::string_view before = text.substr(0, equals);
    std::string mended;
    if (name.find(' ') != name.npos) {
        const std::string found = name;
        std::erase(name, ' ');
        assume(RepairCode::NameSpaces, found, name, name);
        mended = std::string(before.find_first_not_of(' '), ' ') + name;
        before = mended;
    }
    if (value.front() == '\\') {
        takeBinary(before, name, value.substr(1));
        return {};
    }
    const bool isText = value.front() == '"';
    const std::size_t space = isText ? value.npos : value.find(' ');
    std::string_view rest;
    if (space != value.npos && space != 0 && isLine(value.substr(space))) {
        rest = value.substr(space);
        assume(RepairCode::LinesJoined, rest, {}, name);
    }
    const std::string_view own = value.substr(0, value.size() - rest.size());
    const bool isFlag = own.size() <= 5 && (equalNoCase(own, "true") || equalNoCase(own, "false"));
    add(before, name,
        isText   ? '"'
        : isFlag ? '?'
                 : '#',
        own, std::string(before) + '=' + std::string(own));
    return rest;
}

void BodySalvage::takeBinary(std::string_view before, const std::string& name,
                             std::string_view first) {
    std::size_t slash = first.find('\\');
    std::string value(first.substr(0, slash));
    std::string_view behindValue =
        slash == first.npos ? std::string_view() : first.substr(slash + 1);
    std::size_t last = index_;
    while (slash == std::string_view::npos && last + 1 < lines_.size()) {
        const std::string_view text = lines_[last + 1].text;
        slash = text.find('\\');
        const std::string_view part = text.substr(0, slash);
        if (holdsMarks(part) || (part.empty() && slash == text.npos)) {
            slash = std::string_view::npos;
            break;
        }
        value.append(part);
        behindValue = slash == text.npos ? std::string_view() : text.substr(slash + 1);
        ++last;
    }
    if (slash == std::string_view::npos) {
        assume(RepairCode::BinaryEnded, {}, value, name);
    } else if (!behindValue.empty()) {
        assume(RepairCode::TextDropped, behindValue, {}, name);
        lose(Loss::Unit::Bytes, behindValue.size(), behindValue);
    }
    add(before, name, '\\', value, std::string(before) + "=\\" + value + '\\');
    index_ = last;
}

void BodySalvage::add(std::string_view before, const std::string& name, char type,
                      std::string_view value, const std::string& line) {
    if (!mayAddItem()) {
        return;
    }
    const auto [there, isNew] = levels_.back().items.try_emplace(type + name, value);
    if (isNew) {
        emit(line);
        return;
    }
    if (there->second == value) {
        assume(RepairCode::DuplicateEqual, value, {}, name);
        return;
    }
    const bool isShort = type == '\\' || line.size() + mostDuplicates <= readSize;
    const std::optional<std::string> other =
        isNumber(name) && isShort ? markedName(name, type) : std::nullopt;
    if (!other) {
        assume(RepairCode::DuplicateDropped, value, there->second, name);
        lose(Loss::Unit::Items, 1, line);
        return;
    }
    emit(*other + line.substr(before.size()));
}

std::optional<std::string> BodySalvage::markedName(std::string_view name, char type) {
    if (result_.duplicates.size() >= mostDuplicates) {
        return std::nullopt;
    }
    std::string other = std::string(name) + duplicateMark;
    while (!levels_.back().items.emplace(type + other, std::string()).second) {
        other.push_back(duplicateMark);
    }
    result_.duplicates.emplace(static_cast<std::uint32_t>(result_.sources.size() + 1),
                               encoding_.decoded(name));
    return other;
}

bool BodySalvage::mayAddItem() {
    if (++items_ > limits_.items && !full_) {
        full_ = true;
        assume(RepairCode::TooManyItems, {});
        lose(Loss::Unit::Lines, lines_.size() - index_, lines_[index_].text);
    }
    return !full_;
}

SalvagedBody salvageBody(std::string_view body, bool torn, const PiaLimits& limits,
                         RepairNotes& notes) {
    return BodySalvage(body, torn, limits, notes).run();
}

}  // namespace platen

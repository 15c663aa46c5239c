#include "pia/file_body.h"

#include <algorithm>

#include <platen/utcore.h>
#include "pia/body_lines.h"

namespace pia_body {

namespace {

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

}  // namespace

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

bool FileBody::refuse(const Name& name, double number) {
    return report_.fail({.code = PiaCode::ValueInvalid,
                         .path = pathOf(name.text),
                         .expected = L"a finite number",
                         .found = ut::formatFixed(number, -1)});
}

bool FileBody::open(const Name& name) {
    if (!add(name, PiaItemType::Block, std::string_view())) {
        return false;
    }
    if (depth_ == blockNames_.size()) {
        blockNames_.emplace_back();
    }
    blockNames_[depth_++] = name.text;
    return true;
}

void FileBody::close() {
    --depth_;
    makeRoom();
    lines_.addClosing(indentation());
}

void FileBody::finish() {
    lines_.moveTo(body_);
    if (!onlyPlain_ && !ut::isAscii(body_) && ut::isUtf8(body_)) {
        report_.warn({.code = PiaCode::NotReadBack,
                      .expected = L"text that is not UTF-8 by chance",
                      .found = L"a body in the ANSI code page that reads as UTF-8"});
    }
}

std::size_t FileBody::indentation() const { return std::min(depth_, lineLimit); }

std::wstring FileBody::pathOf(std::wstring_view name) const {
    std::wstring path;
    for (std::size_t level = 0; level < depth_; ++level) {
        path.append(blockNames_[level]).append(L"/");
    }
    return path.append(name);
}

bool FileBody::addCarefully(std::wstring_view name, PiaItemType type, const std::wstring& value) {
    lines_.moveTo(body_);
    onlyPlain_ = false;
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

std::size_t FileBody::append(std::wstring_view text, std::size_t& room, bool& cut) {
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

void FileBody::appendFrame(std::string_view frame, std::size_t& room, bool& cut) {
    cut = cut || frame.size() > room;
    const std::string_view part = frame.substr(0, room);
    body_.append(part);
    room -= part.size();
}

}  // namespace pia_body

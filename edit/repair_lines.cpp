#include "edit/repair_lines.h"

#include <algorithm>

#include <platen/utcore.h>

namespace platen::repair_lines {

LineKind kindOf(std::string_view line) {
    const std::size_t mark = line.find_first_of("={}");
    if (mark == std::string_view::npos) {
        return LineKind::Other;
    }
    const bool isItem = line.find('=', mark) != std::string_view::npos;
    if (line[mark] == '}') {
        return isItem ? LineKind::Other : LineKind::Closing;
    }
    return isItem ? LineKind::Item : LineKind::Opening;
}

std::vector<Line> linesOf(std::string_view body) {
    std::vector<Line> lines;
    while (!body.empty()) {
        const std::size_t feed = body.find('\n');
        const bool ends = feed != std::string_view::npos;
        std::string_view text = body.substr(0, feed);
        body.remove_prefix(ends ? feed + 1 : body.size());
        if (ends && text.ends_with('\r')) {
            text.remove_suffix(1);
        }
        lines.push_back({text, ends});
    }
    return lines;
}

bool isIndented(const std::vector<Line>& lines) {
    constexpr std::size_t sureFrom = 4;
    std::size_t agreeing = 0;
    std::size_t differing = 0;
    const Line* before = nullptr;
    for (const Line& line : lines) {
        if (line.isBlank()) {
            continue;
        }
        const LineKind kind = kindOf(line.text);
        if (before != nullptr) {
            // Only lines at the edges of a block tell an indented body from another.
            const bool enters = kindOf(before->text) == LineKind::Opening;
            const bool leaves = kind == LineKind::Closing;
            if (enters != leaves) {
                const bool agrees = enters ? line.indentation() == before->indentation() + 1
                                           : line.indentation() + 1 == before->indentation();
                ++(agrees ? agreeing : differing);
            }
        }
        before = &line;
    }
    return agreeing > 0 && agreeing >= differing * sureFrom;
}

TextEncoding::TextEncoding(std::string_view body) : isUtf8_(ut::isUtf8(body)) {
    if (isUtf8_) {
        return;
    }
    std::size_t characters = 0;
    std::size_t faults = 0;
    for (std::size_t at = 0; at < body.size();) {
        const std::size_t length = characterAt(body, at);
        characters += length > 1 ? 1 : 0;
        faults += length == 0 ? 1 : 0;
        at += std::max<std::size_t>(length, 1);
    }
    isUtf8_ = characters > faults;
    hasFaults_ = isUtf8_;
}

std::size_t TextEncoding::characterAt(std::string_view text, std::size_t at) {
    constexpr std::size_t longest = 4;
    for (std::size_t length = 1; length <= std::min(longest, text.size() - at); ++length) {
        if (ut::isUtf8(text.substr(at, length))) {
            return length;
        }
    }
    return 0;
}

std::string TextEncoding::cleaned(std::string_view text) const {
    std::string clean;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = hasFaults_ ? characterAt(text, at) : 1;
        if (length != 0 && text[at] != '\0') {
            clean.append(text.substr(at, length));
        }
        at += std::max<std::size_t>(length, 1);
    }
    clean.erase(clean.find_last_not_of('\r') + 1);
    return clean;
}

bool TextEncoding::isClean(std::string_view text) const {
    return text.find('\0') == std::string_view::npos && !text.ends_with('\r') &&
           (!hasFaults_ || ut::isUtf8(text));
}

std::size_t TextEncoding::cutBefore(std::string_view text, std::size_t most) const {
    constexpr unsigned continuationMask = 0xC0;
    constexpr unsigned continuation = 0x80;
    while (isUtf8_ && most > 0 && most < text.size() &&
           (static_cast<unsigned char>(text[most]) & continuationMask) == continuation) {
        --most;
    }
    return most;
}

std::wstring TextEncoding::decoded(std::string_view text) const {
    std::wstring wide;
    return isUtf8_ && ut::decodeUtf8(text, wide) ? wide : ut::decodeAnsi(text);
}

}  // namespace platen::repair_lines

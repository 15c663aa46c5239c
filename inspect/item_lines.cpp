#include "inspect/item_lines.h"

#include <cstddef>
#include <vector>

#include <platen/utcore.h>
#include "pia/body_lines.h"

namespace platen {
namespace {

/// The last "/" of `path` before `end`, or npos.
std::size_t stepBefore(std::string_view path, std::size_t end) {
    return end == 0 ? std::string_view::npos : path.rfind('/', end - 1);
}

std::string_view trimmed(std::string_view name) {
    const std::size_t first = name.find_first_not_of(' ');
    const std::size_t last = name.find_last_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : name.substr(first, last - first + 1);
}

/// Follows a sound body as its reader did.
class Walk {
public:
    explicit Walk(const PiaInput& input)
        : lines_(input.body()), utf8_(input.container().encoding == PiaEncoding::Utf8) {}

    /// Goes to the next item; false at the end. Then `path` and `line` are the item's.
    bool next() {
        path_.resize(blockLengths_.empty() ? 0 : blockLengths_.back());
        std::string_view piece;
        while (lines_.next(piece, unread_)) {
            const std::size_t equals = piece.find('=');
            if (equals != std::string_view::npos) {
                append(piece.substr(0, equals));
                line_ = lines_.line();
                skipBinary(piece.substr(equals + 1));
                return true;
            }
            if (piece.find('}') != std::string_view::npos && !blockLengths_.empty()) {
                blockLengths_.pop_back();
                path_.resize(blockLengths_.empty() ? 0 : blockLengths_.back());
            } else if (const std::size_t brace = piece.find('{'); brace != std::string_view::npos) {
                append(piece.substr(0, brace));
                line_ = lines_.line();
                path_ += '/';
                blockLengths_.push_back(path_.size());
                return true;
            }
        }
        return false;
    }

    std::string_view path() const {
        const std::string_view path = path_;
        return path.ends_with('/') ? path.substr(0, path.size() - 1) : path;
    }
    std::uint64_t line() const { return line_; }

private:
    void append(std::string_view name) {
        name = trimmed(name);
        path_ +=
            utf8_ || ut::isAscii(name) ? std::string(name) : ut::encodeUtf8(ut::decodeAnsi(name));
    }

    /// A binary value goes on until a backslash ends it.
    void skipBinary(std::string_view value) {
        if (!value.starts_with('\\') || value.find('\\', 1) != std::string_view::npos) {
            return;
        }
        std::string_view piece;
        while (lines_.next(piece, unread_) && piece.find('\\') == std::string_view::npos) {
        }
    }

    PiaBodyLines lines_;
    PiaReport unread_;
    bool utf8_;
    /// The path of the item, ending with "/" for a block.
    std::string path_;
    /// How much of the path leads into each of the open blocks.
    std::vector<std::size_t> blockLengths_;
    std::uint64_t line_ = 0;
};

}  // namespace

void ItemLines::want(std::wstring_view path) {
    const std::string wanted = ut::encodeUtf8(path);
    for (std::size_t end = wanted.size(); end != std::string::npos; end = stepBefore(wanted, end)) {
        if (!lines_.try_emplace(wanted.substr(0, end), 0).second) {
            break;
        }
    }
}

void ItemLines::find(const PiaInput& input) {
    constexpr int lineTextVersion = 2;
    if (lines_.empty() || input.container().version != lineTextVersion) {
        return;
    }
    Walk walk(input);
    while (walk.next()) {
        const auto found = lines_.find(walk.path());
        if (found != lines_.end() && found->second == 0) {
            found->second = walk.line();
        }
    }
}

std::optional<std::uint64_t> ItemLines::of(std::wstring_view path) const {
    const std::string wanted = ut::encodeUtf8(path);
    for (std::size_t end = wanted.size(); end != std::string::npos; end = stepBefore(wanted, end)) {
        const auto found = lines_.find(wanted.substr(0, end));
        if (found != lines_.end() && found->second != 0) {
            return found->second;
        }
    }
    return std::nullopt;
}

}  // namespace platen

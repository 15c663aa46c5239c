/// The lines of a damaged body, and what their indentation says.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platen::repair_lines {

/// A line without its line feed.
struct Line {
    std::string_view text;
    /// False for a last line that the body ends within.
    bool ends = true;

    bool isBlank() const { return text.find_first_not_of(' ') == std::string_view::npos; }
    std::size_t indentation() const {
        return isBlank() ? text.size() : text.find_first_not_of(' ');
    }
};

enum class LineKind { Item, Opening, Closing, Other };

/// What a reader takes the line for inside a block.
LineKind kindOf(std::string_view line);

std::vector<Line> linesOf(std::string_view body);

/// True when nearly every line is indented by the number of blocks that it is in, as writers do, so
/// that the indentation says where braces are missing.
bool isIndented(const std::vector<Line>& lines);

/// The encoding that a damaged body was written in. A reader takes a body for UTF-8 only as a
/// whole, so that one wrong byte would spoil all accented letters.
class TextEncoding {
public:
    explicit TextEncoding(std::string_view body);

    /// True for UTF-8 with bytes in it that are no text.
    bool hasFaults() const { return hasFaults_; }
    /// True when a line needs no `cleaned`.
    bool isClean(std::string_view text) const;
    /// Without zero bytes, carriage returns at the end, and what is no text of the encoding.
    std::string cleaned(std::string_view text) const;
    /// `most`, or a little less where that is in the middle of a character.
    std::size_t cutBefore(std::string_view text, std::size_t most) const;
    std::wstring decoded(std::string_view text) const;

private:
    /// The length of the UTF-8 character at a place; 0 when there is none.
    static std::size_t characterAt(std::string_view text, std::size_t at);

    bool isUtf8_;
    bool hasFaults_ = false;
};

}  // namespace platen::repair_lines

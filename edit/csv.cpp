#include "edit/csv.h"

#include <algorithm>

namespace platen::csv {
namespace {

constexpr std::string_view separators = ",;\t";

char separatorIn(std::string_view text) {
    bool quoted = false;
    for (const char character : text) {
        if (character == '"') {
            quoted = !quoted;
        } else if (!quoted && (character == '\n' || character == '\r')) {
            break;
        } else if (!quoted && separators.find(character) != std::string_view::npos) {
            return character;
        }
    }
    return separators.front();
}

/// Goes through a text character by character and knows where a spreadsheet could see the beginning
/// of a cell, whatever separates its columns: it may take the quotes before for nothing.
class CellStarts {
public:
    bool isStart() const { return start_; }
    void pass(char character) {
        constexpr std::string_view ends = ",;\t\r\n|";
        start_ = ends.find(character) != std::string_view::npos || (start_ && character == '"');
    }

private:
    bool start_ = true;
};

bool beginsFormula(char character) {
    constexpr std::string_view signs = "=+-@\t\r\n'";
    return signs.find(character) != std::string_view::npos;
}

}  // namespace

Reader::Reader(std::string_view bytes) : bytes_(bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes_.starts_with(mark)) {
        bytes_.remove_prefix(mark.size());
    }
    separator_ = separatorIn(bytes_);
}

bool Reader::next(std::vector<std::string>& cells) {
    cells.clear();
    while (fault_.empty() && at_ < bytes_.size() && atLineEnd()) {
        passLineEnd();
        ++row_;
    }
    if (!fault_.empty() || at_ == bytes_.size()) {
        return false;
    }
    ++row_;
    for (column_ = 1;; ++column_) {
        if (column_ > mostColumns) {
            return stop("the row has too many columns");
        }
        if (!readCell(cells.emplace_back())) {
            return false;
        }
        if (at_ == bytes_.size()) {
            return true;
        }
        if (atLineEnd()) {
            passLineEnd();
            return true;
        }
        ++at_;
    }
}

bool Reader::atLineEnd() const {
    return bytes_[at_] == '\n' || bytes_.substr(at_).starts_with("\r\n");
}

void Reader::passLineEnd() { at_ += bytes_[at_] == '\r' ? 2 : 1; }

/// Ends before the separator, the line end or the end.
bool Reader::readCell(std::string& cell) {
    if (at_ < bytes_.size() && bytes_[at_] == '"') {
        return readQuoted(cell);
    }
    while (at_ < bytes_.size() && bytes_[at_] != separator_ && !atLineEnd()) {
        if (bytes_[at_] == '"') {
            return stop("a quote stands inside a cell that does not begin with one");
        }
        if (!append(cell, bytes_[at_++])) {
            return false;
        }
    }
    return true;
}

bool Reader::readQuoted(std::string& cell) {
    ++at_;
    for (;;) {
        if (at_ == bytes_.size()) {
            return stop("the quote at the beginning of the cell is never closed");
        }
        const char character = bytes_[at_++];
        const bool isQuote = character == '"';
        if (isQuote && (at_ == bytes_.size() || bytes_[at_] != '"')) {
            break;
        }
        at_ += isQuote ? 1 : 0;
        if (!append(cell, character)) {
            return false;
        }
    }
    const bool ends = at_ == bytes_.size() || bytes_[at_] == separator_ || atLineEnd();
    return ends || stop("something stands behind the closing quote");
}

bool Reader::append(std::string& cell, char character) {
    if (cell.size() == longestCell) {
        return stop("the cell is too long");
    }
    if (character == '\0') {
        return stop("the cell holds a zero byte");
    }
    cell += character;
    return true;
}

bool Reader::stop(const char* fault) {
    fault_ = fault;
    return false;
}

void addRow(const std::vector<std::string>& cells, std::string& text) {
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const std::string& cell = cells[column];
        text += column == 0 ? "" : ",";
        const bool quoted = cell.find_first_of(",;\t\"\r\n") != std::string::npos ||
                            cell.starts_with(' ') || cell.ends_with(' ');
        if (!quoted) {
            text += cell;
            continue;
        }
        text += '"';
        for (const char character : cell) {
            text.append(character == '"' ? 2 : 1, character);
        }
        text += '"';
    }
    text += "\r\n";
}

std::string defused(std::string_view text) {
    std::string result;
    CellStarts starts;
    for (const char character : text) {
        if (starts.isStart() && beginsFormula(character)) {
            result += '\'';
        }
        result += character;
        starts.pass(character);
    }
    return result;
}

std::string restored(std::string_view text) {
    std::string result;
    CellStarts starts;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (starts.isStart() && text[at] == '\'' && at + 1 < text.size() &&
            beginsFormula(text[at + 1])) {
            ++at;
        }
        result += text[at];
        starts.pass(text[at]);
    }
    return result;
}

}  // namespace platen::csv

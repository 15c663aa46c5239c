/// Tables of texts with commas between the columns, as spreadsheets write and read them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platen::csv {

/// One row after the other, strictly as RFC 4180 has them, except that lines may end in a line feed
/// alone. A mark of UTF-8 at the beginning is passed over. The separator is a comma, a semicolon or
/// a tab: the one that comes first in the first line outside of quotes.
class Reader {
public:
    /// Wider and longer texts are no tables of ours.
    static constexpr std::size_t mostColumns = 1000;
    static constexpr std::size_t longestCell = 64UL * 1024;

    /// Borrows the bytes.
    explicit Reader(std::string_view bytes);

    /// Reads the next row that is not empty. False at the end or at a fault.
    bool next(std::vector<std::string>& cells);
    /// The row that was read or is at fault, from 1; empty ones count.
    std::size_t row() const { return row_; }
    /// The cell at fault, from 1.
    std::size_t column() const { return column_; }
    /// Why reading ended before the end; empty when it did not.
    const std::string& fault() const { return fault_; }
    char separator() const { return separator_; }

private:
    bool readCell(std::string& cell);
    bool readQuoted(std::string& cell);
    bool append(std::string& cell, char character);
    bool stop(const char* fault);
    bool atLineEnd() const;
    void passLineEnd();

    std::string_view bytes_;
    std::size_t at_ = 0;
    std::size_t row_ = 0;
    std::size_t column_ = 0;
    char separator_ = ',';
    std::string fault_;
};

/// Adds a row of two and more cells with its line end. Cells are quoted where they must be.
void addRow(const std::vector<std::string>& cells, std::string& text);

/// The text so that no spreadsheet takes any of it for a formula: an apostrophe stands before each
/// sign that could begin one where a cell could begin.
std::string defused(std::string_view text);
/// What `defused` was made of.
std::string restored(std::string_view text);

}  // namespace platen::csv

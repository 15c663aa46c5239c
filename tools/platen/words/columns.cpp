#include "tools/platen/words/columns.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace cli::words {
namespace {

/// Characters, not bytes.
std::size_t widthOf(std::string_view cell) {
    return static_cast<std::size_t>(std::count_if(cell.begin(), cell.end(), [](char unit) {
        return (static_cast<unsigned char>(unit) & 0xC0U) != 0x80U;
    }));
}

}  // namespace

void printColumns(const std::vector<std::vector<std::string>>& rows, const Console& console) {
    std::vector<std::size_t> widths;
    std::vector<bool> filled;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        widths.resize(std::max(widths.size(), rows[line].size()));
        filled.resize(widths.size());
        for (std::size_t column = 0; column < rows[line].size(); ++column) {
            const std::string& cell = rows[line][column];
            widths[column] = std::max(widths[column], widthOf(printable(cell)));
            filled[column] = filled[column] || (line > 0 && !cell.empty());
        }
    }
    constexpr std::size_t gap = 2;
    for (const std::vector<std::string>& row : rows) {
        std::string text;
        std::size_t missing = 0;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string cell = printable(row[column]);
            if (filled[column] && !cell.empty()) {
                text.append(missing, ' ').append(cell);
                missing = 0;
            }
            if (filled[column]) {
                missing += widths[column] - widthOf(cell) + gap;
            }
        }
        console.out << text << '\n';
    }
}

}  // namespace cli::words

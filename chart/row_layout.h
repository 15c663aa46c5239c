/// Rows of styles in columns on pages.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "chart/sheet.h"
#include "chart/style_rows.h"

namespace platen::chart {

/// How large rows are, in millimetres.
struct Density {
    /// The least height of a row.
    double pitch;
    double label;
    double words;
    /// From a line of words to the next.
    double leading;
    double swatch;
    double swatchHeight;
    double shortestLine;
    double longestLine;
    /// No label is given more room.
    double mostLabel;
    /// No words need more room; longer ones are broken into lines.
    double mostWords;
    std::size_t mostLines;
};

inline constexpr std::array<Density, 3> densities{{
    {9.0, 3.3, 2.7, 3.5, 12, 5.4, 30, 60, 50, 62, 3},
    {6.4, 2.6, 2.2, 2.8, 10, 4.0, 22, 44, 40, 44, 3},
    {4.5, 2.2, 1.8, 2.05, 8, 2.9, 13, 36, 22, 30, 2},
}};

class RowLayout {
public:
    /// Borrows the rows.
    RowLayout(const StyleRows& rows, const Density& density, const Room& room);

    std::size_t pages() const { return pages_; }
    void draw(Pencil& pencil, std::size_t page) const;

private:
    struct Cell {
        std::vector<std::string> label;
        std::vector<std::string> words;
        double height = 0;
        std::size_t page = 0;
        double x = 0;
        double y = 0;
    };

    /// Widths of a row's parts for so many columns; false when they do not fit.
    bool shareWidth(std::size_t columns);
    /// Makes one column fit that lacks so much.
    void narrow(double missing);
    void breakLines();
    void giveBackLabel();
    /// The number of columns that the rows take when each is so high.
    std::size_t place(std::size_t columns, double height);
    /// Columns of about the same height, and rows that take what room is left.
    void balance();

    double weightX() const { return lineX() + line_ + gap; }
    double wordsX() const { return weightX() + weight_ + gap; }
    double swatchX() const { return label_ + gap; }
    double lineX() const { return swatchX() + density_.swatch + gap; }

    void drawHeadings(Pencil& pencil, std::size_t page) const;
    void drawRow(Pencil& pencil, const StyleRow& row, const Cell& cell) const;
    static void drawSwatch(Pencil& pencil, const StyleRow& row, const SceneRectangle& place);
    void drawLine(Pencil& pencil, const StyleRow& row, const SceneRectangle& place) const;

    static constexpr double gap = 2;
    static constexpr double gutter = 6;
    static constexpr double headings = 4.2;

    const StyleRows& rows_;
    Density density_;
    Room room_;
    /// What labels, weights and words would like to have.
    double wishedLabel_ = 0;
    double wishedWords_ = 0;
    double weight_ = 0;
    double label_ = 0;
    double line_ = 0;
    double words_ = 0;
    double columnWidth_ = 0;
    /// All labels are numbers of single colours, which stand below each other by their ends.
    bool numbers_ = false;
    std::size_t columns_ = 1;
    std::size_t pages_ = 1;
    std::vector<Cell> cells_;
};

}  // namespace platen::chart

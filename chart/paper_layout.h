/// Papers to one scale, in shelves on pages.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "chart/paper_list.h"
#include "chart/sheet.h"

namespace platen::chart {

/// Sizes of what stands below a paper.
struct PaperPrint {
    double name;
    double words;
    /// No paper has less room for its words.
    double leastWidth;
    /// The longest side of the largest paper is drawn at least so long.
    double leastSide;
};

inline constexpr std::array<PaperPrint, 2> paperPrints{{
    {2.9, 2.3, 41, 40},
    {2.2, 1.9, 35, 24},
}};

class PaperLayout {
public:
    /// Borrows the papers, and draws a millimetre or pixel of them `scale` times smaller.
    PaperLayout(const std::vector<const ChartPaper*>& papers, const PaperPrint& print,
                const Room& room, double scale);

    std::size_t pages() const { return pages_; }
    /// No paper goes beyond the room.
    bool fits() const;
    /// `first` is the number of the first paper in the whole chart.
    void draw(Pencil& pencil, std::size_t page, std::size_t first) const;

private:
    struct Cell {
        const ChartPaper* paper = nullptr;
        double width = 0;
        double drawnWidth = 0;
        double drawnHeight = 0;
        /// Its size is written into the drawing.
        bool sizeInside = false;
        std::vector<std::string> name;
        std::vector<std::string> words;
        double wordsHeight = 0;
        std::size_t page = 0;
        double x = 0;
        /// Of the lower edge of the paper.
        double y = 0;
    };

    Cell cellOf(const ChartPaper& paper, double scale) const;
    void place();
    void drawCell(Pencil& pencil, const Cell& cell) const;
    static void drawPaper(Pencil& pencil, const ChartPaper& paper, const SceneRectangle& sheet,
                          double scale);

    static constexpr double between = 6;

    PaperPrint print_;
    Room room_;
    double scale_;
    std::size_t pages_ = 1;
    std::vector<Cell> cells_;
};

}  // namespace platen::chart

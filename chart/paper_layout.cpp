#include "chart/paper_layout.h"

#include <algorithm>
#include <utility>

#include "chart/text_fit.h"

namespace platen::chart {
namespace {

constexpr double leading = 1.3;
constexpr SceneColor unprintable{0xDD, 0xE4, 0xEB};
/// Of a paper without sides that could be drawn.
constexpr double placeholder = 12;

}  // namespace

PaperLayout::PaperLayout(const std::vector<const ChartPaper*>& papers, const PaperPrint& print,
                         const Room& room, double scale)
    : print_(print), room_(room), scale_(scale) {
    cells_.reserve(papers.size());
    for (const ChartPaper* paper : papers) {
        cells_.push_back(cellOf(*paper, scale));
    }
    place();
}

PaperLayout::Cell PaperLayout::cellOf(const ChartPaper& paper, double scale) const {
    Cell cell;
    cell.paper = &paper;
    cell.drawnWidth = paper.hasSize ? paper.width / scale : placeholder;
    cell.drawnHeight = paper.hasSize ? paper.height / scale : placeholder;
    cell.width = std::min(std::max(cell.drawnWidth, print_.leastWidth), room_.width());
    cell.name = wrapped(paper.name, cell.width, print_.name, 3, true);
    constexpr double besideSize = 3;
    cell.sizeInside = paper.hasPrintable &&
                      textWidth(paper.sizeWords, print_.words) + besideSize <
                          (paper.width - paper.left - paper.right) / scale &&
                      print_.words + besideSize < (paper.height - paper.bottom - paper.top) / scale;
    for (const std::string* words : {&paper.sizeWords, &paper.marginWords, &paper.originWords}) {
        if (!words->empty() && !(cell.sizeInside && words == &paper.sizeWords)) {
            for (std::string& line : wrapped(*words, cell.width, print_.words, 2)) {
                cell.words.push_back(std::move(line));
            }
        }
    }
    const double marks = (paper.chosen ? 1 : 0) + (paper.hasPrintable ? 0 : 1);
    cell.wordsHeight = (static_cast<double>(cell.name.size()) * print_.name +
                        (static_cast<double>(cell.words.size()) + marks) * print_.words) *
                       leading;
    return cell;
}

void PaperLayout::place() {
    std::size_t page = 0;
    double top = room_.top + 2;
    for (std::size_t first = 0; first < cells_.size();) {
        double x = room_.left;
        double drawn = 0;
        double words = 0;
        std::size_t end = first;
        while (end < cells_.size() &&
               (end == first || x + cells_[end].width <= room_.right + 1e-6)) {
            cells_[end].x = x;
            x += cells_[end].width + between;
            drawn = std::max(drawn, cells_[end].drawnHeight);
            words = std::max(words, cells_[end].wordsHeight);
            ++end;
        }
        const double height = drawn + 1 + words;
        if (top + height > room_.bottom + 1e-6 && top > room_.top + 2) {
            ++page;
            top = room_.top + 2;
        }
        for (; first < end; ++first) {
            cells_[first].page = page;
            cells_[first].y = top + drawn;
        }
        top += height + between;
    }
    pages_ = page + 1;
}

bool PaperLayout::fits() const {
    return std::ranges::all_of(cells_, [&](const Cell& cell) {
        return cell.drawnWidth <= room_.width() + 1e-6 &&
               cell.y + 1 + cell.wordsHeight <= room_.bottom + 1e-6;
    });
}

void PaperLayout::draw(Pencil& pencil, std::size_t page, std::size_t first) const {
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        if (cells_[index].page == page) {
            const ChartPaper& paper = *cells_[index].paper;
            pencil.begin({.id = "paper-" + std::to_string(first + index + 1),
                          .title = paper.name + ": " + paper.sizeWords + ", " + paper.marginWords +
                                   (paper.originWords.empty() ? "" : ", " + paper.originWords) +
                                   (paper.chosen ? ", chosen" : "")});
            drawCell(pencil, cells_[index]);
            pencil.end();
        }
    }
}

void PaperLayout::drawCell(Pencil& pencil, const Cell& cell) const {
    const ChartPaper& paper = *cell.paper;
    drawPaper(pencil, paper, {cell.x, cell.y - cell.drawnHeight, cell.drawnWidth, cell.drawnHeight},
              scale_);
    if (cell.sizeInside) {
        pencil.text(cell.x + (paper.left + (paper.width - paper.left - paper.right) / 2) / scale_,
                    cell.y -
                        (paper.bottom + (paper.height - paper.bottom - paper.top) / 2) / scale_ +
                        print_.words * 0.36,
                    print_.words, paper.sizeWords, quiet, false, SceneAnchor::Middle);
    }
    double y = cell.y + 1;
    for (const std::string& line : cell.name) {
        y += print_.name * leading;
        pencil.text(cell.x, y - print_.name * 0.2, print_.name, line, ink, true);
    }
    const auto write = [&](const std::string& words, SceneColor color, bool bold) {
        y += print_.words * leading;
        pencil.text(cell.x, y - print_.words * 0.2, print_.words, words, color, bold);
    };
    if (paper.chosen) {
        write("chosen", accent, true);
    }
    if (!paper.hasPrintable) {
        write(paper.hasSize ? "the margins leave nothing" : "no size to draw", notable, true);
    }
    for (const std::string& line : cell.words) {
        write(line, quiet, false);
    }
}

void PaperLayout::drawPaper(Pencil& pencil, const ChartPaper& paper, const SceneRectangle& sheet,
                            double scale) {
    constexpr double shadow = 0.5;
    SceneRectangle outer = sheet;
    if (!paper.hasSize) {
        outer.stroke = SceneStroke{notable, 0.2, SceneCap::Butt, SceneJoin::Miter, {1, 1}};
        pencil.rectangle(std::move(outer));
        return;
    }
    pencil.rectangle({sheet.x + shadow, sheet.y + shadow, sheet.width, sheet.height, 0, hairline});
    outer.fill = paper.hasPrintable ? unprintable : white;
    pencil.rectangle(outer);
    if (paper.hasPrintable) {
        SceneRectangle printable{sheet.x + paper.left / scale,
                                 sheet.y + paper.top / scale,
                                 (paper.width - paper.left - paper.right) / scale,
                                 (paper.height - paper.bottom - paper.top) / scale,
                                 0,
                                 white};
        // Margins that cannot be told from the edge have no lines of their own.
        constexpr double visible = 0.25;
        if (std::max({paper.left, paper.bottom, paper.right, paper.top}) / scale > visible) {
            printable.stroke =
                SceneStroke{quiet, 0.12, SceneCap::Butt, SceneJoin::Miter, {0.9, 0.6}};
        }
        pencil.rectangle(std::move(printable));
    }
    outer.fill.reset();
    outer.stroke = paper.chosen   ? SceneStroke{accent, 0.6}
                   : paper.custom ? SceneStroke{ink, 0.3}
                                  : SceneStroke{outline, 0.2};
    pencil.rectangle(std::move(outer));
}

}  // namespace platen::chart

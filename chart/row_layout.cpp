#include "chart/row_layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "chart/text_fit.h"

namespace platen::chart {
namespace {

/// Where the base line of the first of several lines stands, so that all are in the middle.
double firstBaseLine(double middle, std::size_t lines, double size, double leading) {
    constexpr double capitals = 0.36;
    return middle + size * capitals - static_cast<double>(lines - 1) * leading / 2;
}

std::string titleOf(const StyleRow& row) {
    std::string title =
        row.label + ": " +
        (row.weight == StyleRow::Weight::Object ? "the object's line weight" : row.weightWords);
    title += row.alike.empty() ? "" : " (" + row.alike + ")";
    return row.words.empty() ? title : title + ", " + row.words;
}

}  // namespace

RowLayout::RowLayout(const StyleRows& rows, const Density& density, const Room& room)
    : rows_(rows), density_(density), room_(room) {
    constexpr double fewestLabel = 4;
    wishedLabel_ = fewestLabel;
    constexpr std::size_t digits = 3;
    numbers_ = rows.byColor;
    for (const StyleRow& row : rows.rows) {
        numbers_ = numbers_ && row.label.size() <= digits;
        wishedLabel_ = std::max(wishedLabel_, textWidth(row.label, density.label, true));
        wishedWords_ = std::max(wishedWords_, textWidth(row.words, density.words));
        weight_ = std::max({weight_, textWidth(row.weightWords, density.words),
                            textWidth(row.dotWords, density.words, true)});
    }
    weight_ = std::min(weight_, density.mostWords);
    cells_.resize(rows.rows.size());
    // The fewest columns that take one page, or as many as there can be.
    const double least = static_cast<double>(cells_.size()) * density.pitch;
    for (std::size_t columns = 1; shareWidth(columns); ++columns) {
        columns_ = columns;
        if (least > static_cast<double>(columns) * room.height()) {
            continue;
        }
        breakLines();
        if (place(columns, room_.height()) <= columns) {
            balance();
            return;
        }
    }
    shareWidth(columns_);
    breakLines();
    pages_ = (place(columns_, room_.height()) + columns_ - 1) / columns_;
}

void RowLayout::balance() {
    double total = 0;
    for (const Cell& cell : cells_) {
        total += cell.height;
    }
    // Heights are tried from the least that can do; each step lets a row more into a column.
    double height = headings + total / static_cast<double>(columns_);
    while (height < room_.height() && place(columns_, height) > columns_) {
        height += density_.pitch / 4;
    }
    constexpr double mostStretch = 1.25;
    const double used = std::min(height, room_.height()) - headings;
    const double stretch =
        std::clamp((room_.height() - headings) / std::max(used, density_.pitch), 1.0, mostStretch);
    for (Cell& cell : cells_) {
        cell.height *= stretch;
    }
    place(columns_, std::min(room_.height(), headings + used * stretch));
}

bool RowLayout::shareWidth(std::size_t columns) {
    const auto count = static_cast<double>(columns);
    columnWidth_ = (room_.width() - gutter * (count - 1)) / count;
    label_ = std::min(wishedLabel_, density_.mostLabel);
    words_ = std::min(wishedWords_, density_.mostWords);
    line_ = density_.shortestLine;
    double left = columnWidth_ - wordsX() - words_;
    if (left < 0) {
        // Words may go into more lines, but not into too many.
        const double least = std::min(words_, density_.mostWords * 0.6);
        const double taken = std::min(-left, words_ - least);
        words_ -= taken;
        if (left + taken < -1e-9) {
            if (columns == 1) {
                narrow(-left - taken);
            }
            return columns == 1;
        }
        return true;
    }
    const auto take = [&left](double& part, double wished) {
        const double more = std::clamp(wished - part, 0.0, left);
        part += more;
        left -= more;
    };
    take(line_, density_.shortestLine * 1.6);
    take(words_, wishedWords_);
    take(line_, density_.longestLine);
    return true;
}

void RowLayout::narrow(double missing) {
    for (double* part : {&label_, &weight_, &words_}) {
        const double given = std::min(missing, *part / 2);
        *part -= given;
        missing -= given;
    }
    line_ = std::max(line_ - missing, 1.0);
}

// A label in several lines seldom fills them.
void RowLayout::giveBackLabel() {
    double used = 0;
    for (const Cell& cell : cells_) {
        used = std::max(used, widest(cell.label, density_.label, true));
    }
    const double left = std::max(0.0, label_ - used);
    label_ -= left;
    line_ += std::min(left, std::max(0.0, density_.longestLine - line_));
}

void RowLayout::breakLines() {
    constexpr double besideLine = 1.4;
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        const StyleRow& row = rows_.rows[index];
        Cell& cell = cells_[index];
        // Numbers of gathered styles are what the row is about.
        const std::size_t most = rows_.byColor ? density_.mostLines + 2 : density_.mostLines;
        cell.label = wrapped(row.label, label_ + 1e-6, density_.label, most, true);
    }
    giveBackLabel();
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        const StyleRow& row = rows_.rows[index];
        Cell& cell = cells_[index];
        cell.words = wrapped(row.words, words_ + 1e-6, density_.words, density_.mostLines);
        const std::size_t others =
            std::max<std::size_t>(cell.words.size(), row.dotWords.empty() ? 1 : 2);
        cell.height = std::max({density_.pitch,
                                static_cast<double>(cell.label.size()) * density_.label * 1.2 + 0.6,
                                static_cast<double>(others) * density_.leading + 0.3,
                                std::min(row.width, widestLine) + besideLine});
    }
}

std::size_t RowLayout::place(std::size_t columns, double height) {
    std::size_t column = 0;
    double y = headings;
    for (Cell& cell : cells_) {
        if (y > headings && y + cell.height > height + 1e-6) {
            ++column;
            y = headings;
        }
        cell.page = column / columns;
        cell.x = room_.left + static_cast<double>(column % columns) * (columnWidth_ + gutter);
        cell.y = room_.top + y;
        y += cell.height;
    }
    return column + 1;
}

void RowLayout::draw(Pencil& pencil, std::size_t page) const {
    drawHeadings(pencil, page);
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        if (cells_[index].page == page) {
            drawRow(pencil, rows_.rows[index], cells_[index]);
        }
    }
}

void RowLayout::drawHeadings(Pencil& pencil, std::size_t page) const {
    const double size = density_.words;
    const double y = room_.top + headings - 1.2;
    double drawn = -1;
    for (const Cell& cell : cells_) {
        if (cell.page != page || cell.x == drawn) {
            continue;
        }
        drawn = cell.x;
        if (numbers_) {
            pencil.text(cell.x + label_, y, size, "pen", quiet, false, SceneAnchor::End);
        } else {
            pencil.text(cell.x, y, size, rows_.byColor ? "pens" : "style", quiet);
        }
        pencil.text(cell.x + swatchX(), y, size, "plotted", quiet);
        pencil.text(cell.x + lineX(), y, size, "line", quiet);
        pencil.text(cell.x + weightX() + weight_, y, size, "weight", quiet, false,
                    SceneAnchor::End);
        pencil.line({cell.x, y + 1.2}, {cell.x + columnWidth_, y + 1.2}, {outline, 0.2});
    }
}

void RowLayout::drawRow(Pencil& pencil, const StyleRow& row, const Cell& cell) const {
    pencil.begin({.id = row.id, .title = titleOf(row)});
    const double middle = cell.y + cell.height / 2;
    const double leading = density_.label * 1.2;
    double y = firstBaseLine(middle, cell.label.size(), density_.label, leading);
    for (const std::string& line : cell.label) {
        if (numbers_) {
            pencil.text(cell.x + label_, y, density_.label, line, ink, true, SceneAnchor::End);
        } else {
            pencil.text(cell.x, y, density_.label, line, ink, true);
        }
        y += leading;
    }

    const SceneRectangle swatch{cell.x + swatchX(), middle - density_.swatchHeight / 2,
                                density_.swatch, density_.swatchHeight};
    if (row.objectColor) {
        drawObjectColor(pencil, swatch, row.colors.front());
    } else {
        drawSwatch(pencil, row, swatch);
    }
    drawLine(pencil, row, {cell.x + lineX(), cell.y, line_, cell.height});

    y = firstBaseLine(middle, row.dotWords.empty() ? 1 : 2, density_.words, density_.leading);
    const double weightEnd = cell.x + weightX() + weight_;
    pencil.text(weightEnd, y, density_.words,
                fitted(row.weightWords, weight_ + 1e-6, density_.words),
                row.weight == StyleRow::Weight::Unknown ? notable : ink, false, SceneAnchor::End);
    pencil.text(weightEnd, y + density_.leading, density_.words,
                fitted(row.dotWords, weight_ + 1e-6, density_.words, true),
                row.alike.empty() ? quiet : notable, !row.alike.empty(), SceneAnchor::End);

    y = firstBaseLine(middle, cell.words.size(), density_.words, density_.leading);
    for (const std::string& line : cell.words) {
        pencil.text(cell.x + wordsX(), y, density_.words, line, quiet);
        y += density_.leading;
    }
    pencil.line({cell.x, cell.y + cell.height}, {cell.x + columnWidth_, cell.y + cell.height},
                {hairline, 0.12});
    pencil.end();
}

// Colours of one ten stand side by side, those of several tens as in the palette: a column each.
void RowLayout::drawSwatch(Pencil& pencil, const StyleRow& row, const SceneRectangle& place) {
    constexpr int ten = 10;
    std::vector<std::vector<SceneColor>> columns;
    int before = -1;
    for (std::size_t index = 0; index < row.colors.size(); ++index) {
        const int tens = row.numbers.empty() ? 0 : row.numbers[index] / ten;
        if (tens != before) {
            columns.emplace_back();
            before = tens;
        }
        columns.back().push_back(row.colors[index]);
    }
    if (columns.size() == 1) {
        columns.clear();
        for (const SceneColor& color : row.colors) {
            columns.push_back({color});
        }
    }
    const double width = place.width / static_cast<double>(columns.size());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const double height = place.height / static_cast<double>(columns[column].size());
        for (std::size_t index = 0; index < columns[column].size(); ++index) {
            // Each reaches to the end and is covered by the next: edges that only met would let
            // the ground through.
            const double x = width * static_cast<double>(column);
            const double y = height * static_cast<double>(index);
            pencil.rectangle({place.x + x, place.y + y, place.width - x, place.height - y, 0,
                              columns[column][index]});
        }
    }
    SceneRectangle around = place;
    around.stroke = SceneStroke{outline, 0.12};
    pencil.rectangle(std::move(around));
}

void RowLayout::drawLine(Pencil& pencil, const StyleRow& row, const SceneRectangle& place) const {
    const double middle = place.y + place.height / 2;
    if (row.weight == StyleRow::Weight::Unknown) {
        return;
    }
    // Several colours have no one line.
    const SceneColor color = row.colors.size() == 1 ? row.colors.front() : quiet;
    if (row.weight == StyleRow::Weight::Object) {
        drawWedge(pencil, place, color);
        return;
    }
    // What has no width is drawn as thin as it can be seen.
    constexpr double thinnest = 0.02;
    const bool cut = row.width > place.height;
    if (cut) {
        SceneRectangle clip = place;
        clip.y += 0.3;
        clip.height -= 0.6;
        pencil.begin({.clip = clip});
    }
    pencil.line({place.x, middle}, {place.x + place.width, middle},
                {color, std::max(row.width, thinnest)});
    if (cut) {
        pencil.end();
    }
}

}  // namespace platen::chart

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <platen/chart.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "chart/row_layout.h"
#include "chart/sheet.h"
#include "chart/style_rows.h"
#include "platform/utcore/markup.h"

namespace platen {
namespace {

using namespace chart;

/// A table may have any number of styles; nobody looks at more.
constexpr std::size_t mostRows = 5000;

std::string plural(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

bool any(const StyleRows& rows, bool (*holds)(const StyleRow&)) {
    return std::ranges::any_of(rows.rows, holds);
}

Frame frameOf(const CPlotStyleTable& table, const StyleRows& rows, const ChartOptions& options) {
    Frame frame;
    frame.heading.title =
        options.title.empty()
            ? (rows.byColor ? "Colour-dependent plot style table" : "Named plot style table")
            : ut::visibleText(options.title);
    frame.heading.subtitle = std::string(rows.byColor ? "Colour-dependent" : "Named") +
                             " plot style table, " + plural(table.size(), "style", "styles");
    if (rows.rows.size() < table.size() && options.gather) {
        frame.heading.subtitle += " in " + plural(rows.rows.size(), "group", "groups");
    }
    if (table.applyFactor()) {
        frame.heading.subtitle += ", scale factor " + numberInWords(table.scaleFactor());
    }
    if (!table.description().empty()) {
        frame.heading.subtitle += ". " + ut::visibleText(ut::encodeUtf8(table.description()));
    }
    frame.heading.notes = rows.notes;
    if (table.size() > mostRows) {
        frame.heading.notes.push_back("Only the first " + std::to_string(mostRows) +
                                      " styles are drawn.");
    }
    using Picture = KeySign::Picture;
    if (any(rows, [](const StyleRow& row) { return row.objectColor; })) {
        frame.key.push_back({Picture::ObjectColor, "the object's own colour"});
    }
    if (any(rows, [](const StyleRow& row) { return row.weight == StyleRow::Weight::Object; })) {
        frame.key.push_back({Picture::ObjectWeight, "the object's own line weight"});
    }
    std::string words = "Where a line has no words, ";
    words +=
        rows.byColor ? "the pen has the colour of its number" : "the style has the object's colour";
    words += ", 100 % screening and the standard line type, ends, joins and fill.";
    if (any(rows, [](const StyleRow& row) { return row.namedPatterns; })) {
        words +=
            " Other line types, ends, joins and fills are given by their numbers, and lines "
            "are drawn unbroken.";
    }
    frame.explanations.push_back(std::move(words));
    return frame;
}

std::string descriptionOf(const StyleRows& rows, const Frame& frame) {
    std::string words = frame.heading.subtitle + ". ";
    for (const std::string& note : frame.heading.notes) {
        words += note + ' ';
    }
    return words + "Each of " + plural(rows.rows.size(), "row", "rows") +
           " has a number or name, the colour as plotted, a line at its true weight, and the "
           "settings in words.";
}

void setBar(Frame& frame, const ChartSheet& sheet) {
    constexpr double wide = 200;
    const bool roomy = sheet.width > wide;
    frame.bar = {roomy ? 100.0 : 50.0, roomy ? "100 mm" : "50 mm",
                 "Line weights are true when this bar measures " +
                     std::string(roomy ? "100" : "50") + " mm: print at actual size (100 %)."};
}

/// The first sheet and density with which one page shows all; the densest on many otherwise.
RowLayout layoutOf(const StyleRows& rows, Frame& frame, const ChartOptions& options,
                   ChartSheet& sheet) {
    const std::optional<ChartSheet> chosen = chosenSheet(options);
    const std::vector<ChartSheet> sheets =
        chosen ? std::vector<ChartSheet>{*chosen} : usualSheets(options);
    for (const ChartSheet& tried : sheets) {
        for (const Density& density : densities) {
            // Small print is for what does not fit on a usual sheet otherwise.
            const bool last = &tried == &sheets.back();
            if (!last && &density == &densities.back()) {
                continue;
            }
            sheet = tried;
            setBar(frame, sheet);
            RowLayout layout(rows, density, roomIn(frame, sheet));
            if (layout.pages() == 1 || (last && &density == &densities.back())) {
                return layout;
            }
        }
    }
    return {rows, densities.back(), roomIn(frame, sheet)};
}

}  // namespace

Scene tableChart(const CPlotStyleTable& table, const ChartOptions& options) {
    StyleRows rows = styleRows(table, options);
    Frame frame = frameOf(table, rows, options);
    Scene scene{frame.heading.title, descriptionOf(rows, frame), {}};
    rows.rows.resize(std::min(rows.rows.size(), mostRows));
    ChartSheet sheet;
    const RowLayout layout = layoutOf(rows, frame, options, sheet);
    for (std::size_t page = 0; page < layout.pages(); ++page) {
        scene.pages.push_back(framedPage(frame, sheet, page + 1, layout.pages()));
        Pencil pencil(scene.pages.back());
        layout.draw(pencil, page);
    }
    return scene;
}

}  // namespace platen

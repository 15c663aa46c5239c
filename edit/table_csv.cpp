#include <algorithm>

#include <platen/edit_styles.h>
#include <platen/inspect.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "edit/csv.h"
#include "edit/table_columns.h"

namespace platen {

std::vector<std::string_view> table_columns::all() {
    std::vector<std::string_view> columns{number, name, localizedName, colors};
    for (const StyleSetting& setting : styleSettings()) {
        columns.push_back(setting.word);
    }
    columns.insert(columns.end(), {scaleFactor, applyFactor, displayUnits});
    return columns;
}

namespace {

namespace columns = table_columns;

/// "1..9, 12": no spreadsheet takes it for a date.
std::string colorsOf(const CPlotStyleTable& table, std::size_t place) {
    std::vector<int> colors;
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        if (table.ACI()->at(entry) == table.style(place)) {
            colors.push_back(static_cast<int>(entry) + 1);
        }
    }
    std::string text;
    for (const char character : rangesInWords(colors)) {
        text += character == '-' ? std::string("..") : std::string(1, character);
    }
    return text;
}

class Rows {
public:
    explicit Rows(bool withColors) : all_(columns::all()) {
        if (!withColors) {
            std::erase(all_, columns::colors);
        }
        begin();
        for (std::size_t column = 0; column < all_.size(); ++column) {
            cells_[column] = all_[column];
        }
        end();
    }

    void begin() { cells_.assign(all_.size(), ""); }
    void put(std::string_view column, std::string text) {
        const auto found = std::ranges::find(all_, column);
        if (found != all_.end()) {
            cells_[static_cast<std::size_t>(found - all_.begin())] = std::move(text);
        }
    }
    void putText(std::string_view column, std::string_view text) {
        put(column, csv::defused(text));
    }
    void end() { csv::addRow(cells_, text_); }

    std::string take() {
        const bool ascii = ut::isAscii(text_);
        // Without the mark spreadsheets read letters beyond ASCII as others.
        return ascii ? std::move(text_) : "\xEF\xBB\xBF" + text_;
    }

private:
    std::vector<std::string_view> all_;
    std::vector<std::string> cells_;
    std::string text_;
};

}  // namespace

std::string tableCsv(const CPlotStyleTable& table) {
    const bool withColors = table.hasACI() && table.ACI() != nullptr && !hasStylePerColour(table);
    Rows rows(withColors);
    for (std::size_t place = 0; place < table.size(); ++place) {
        const CPlotStyle& style = *table.style(place);
        rows.begin();
        rows.put(columns::number, std::to_string(place + 1));
        rows.putText(columns::name, ut::encodeUtf8(style.name()));
        rows.putText(columns::localizedName, ut::encodeUtf8(style.locName()));
        if (withColors) {
            rows.put(columns::colors, colorsOf(table, place));
        }
        for (const StyleSetting& setting : styleSettings()) {
            std::string text = settingText(style, setting, table.customLineweights());
            rows.put(setting.word,
                     setting.word == columns::description ? csv::defused(text) : std::move(text));
        }
        rows.end();
    }
    rows.begin();
    rows.put(columns::number, std::string(columns::tableRow));
    rows.putText(columns::description, ut::encodeUtf8(table.description()));
    rows.put(columns::scaleFactor, numberInWords(table.scaleFactor()));
    rows.put(columns::applyFactor, table.applyFactor() ? "on" : "off");
    rows.put(columns::displayUnits, std::to_string(table.customLineweightDisplayUnits()));
    rows.end();
    for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
        rows.begin();
        rows.put(columns::number, std::string(columns::lineWeightRow) + std::to_string(index));
        rows.put(columns::lineWeight, numberInWords(table.customLineweights()[index]) + " mm");
        rows.end();
    }
    return rows.take();
}

}  // namespace platen

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include <platen/edit_items.h>
#include <platen/edit_styles.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "edit/csv.h"
#include "edit/refusal.h"
#include "edit/style_names.h"
#include "edit/table_columns.h"
#include "edit/table_tree.h"
#include "plotstyle/index_name.h"

namespace platen {

namespace columns = table_columns;

/// Puts the rows of a CSV file into the table of an editor.
class CsvTable {
public:
    CsvTable(TableEditor& editor, std::string_view bytes)
        : editor_(editor), bytes_(bytes), weightsBefore_(editor.table_.customLineweights()) {}

    EditResult read() {
        for (std::size_t place = 0; place < editor_.table_.size(); ++place) {
            const CPlotStyle& style = *editor_.table_.style(place);
            styles_.push_back(style);
            placeOf_.try_emplace(folded(style.name()), place);
        }
        known_ = styles_.size();
        // Line weights stand behind the styles that use them.
        const bool done = readRows(&CsvTable::readOther) && readRows(&CsvTable::readStyle) &&
                          checkNames() && store();
        return done ? EditResult() : refuse(EditFault::ValueInvalid, fault_);
    }

private:
    /// A row of a style: which it is, and whether it is new.
    struct Changed {
        std::size_t place;
        std::size_t row;
    };

    bool stop(std::string reason) {
        fault_ = std::move(reason);
        return false;
    }
    bool stopAt(std::size_t row, std::string_view column, const std::string& reason) {
        const auto found = std::ranges::find(header_, column);
        std::string place = "row " + std::to_string(row);
        if (found != header_.end()) {
            place += ", column " + std::to_string(found - header_.begin() + 1) + " (" +
                     std::string(column) + ")";
        }
        return stop(place + ": " + reason);
    }
    bool stopHere(std::string_view column, const std::string& reason) {
        return stopAt(row_, column, reason);
    }

    bool readRows(bool (CsvTable::*readRow)()) {
        csv::Reader reader(bytes_);
        decimalComma_ = reader.separator() != ',';
        bool isHeader = true;
        while (reader.next(cells_)) {
            row_ = reader.row();
            if (!(isHeader ? readHeader() : checkRow() && (this->*readRow)())) {
                return false;
            }
            isHeader = false;
        }
        if (!reader.fault().empty()) {
            return stop("row " + std::to_string(reader.row()) + ", column " +
                        std::to_string(reader.column()) + ": " + reader.fault());
        }
        return !isHeader || stop("there is no row with the names of columns");
    }

    bool readHeader() {
        const std::vector<std::string_view> all = columns::all();
        header_ = cells_;
        for (std::size_t column = 0; column < header_.size(); ++column) {
            const std::string& word = header_[column];
            const std::string where =
                "row " + std::to_string(row_) + ", column " + std::to_string(column + 1) + ": ";
            if (!word.empty() && std::ranges::find(all, word) == all.end()) {
                std::string names;
                for (const std::string_view each : all) {
                    names += (names.empty() ? "" : ", ") + std::string(each);
                }
                return stop(std::string(where)
                                .append("there is no column \"")
                                .append(word)
                                .append("\"; columns are ")
                                .append(names));
            }
            if (!word.empty() && std::count(header_.begin(), header_.end(), word) > 1) {
                return stop(std::string(where)
                                .append("the column \"")
                                .append(word)
                                .append("\" stands there twice"));
            }
        }
        if (!cell(columns::number) && !cell(columns::name) && !cell(columns::localizedName)) {
            return stop("there is no column \"number\" or \"name\" that says which style is meant");
        }
        return true;
    }

    bool checkRow() {
        std::wstring wide;
        for (std::size_t column = 0; column < cells_.size(); ++column) {
            const bool beyond = column >= header_.size() || header_[column].empty();
            const std::string where =
                "row " + std::to_string(row_) + ", column " + std::to_string(column + 1) + ": ";
            if (beyond && !cells_[column].empty()) {
                return stop(where + "the column has no name");
            }
            if (!ut::decodeUtf8(cells_[column], wide)) {
                return stop(where + "the text is not UTF-8; let the spreadsheet save it as UTF-8");
            }
        }
        return true;
    }

    /// The cell of this row; a row may end early.
    std::optional<std::string> cell(std::string_view column) const {
        const auto found = std::ranges::find(header_, column);
        if (found == header_.end()) {
            return std::nullopt;
        }
        const auto place = static_cast<std::size_t>(found - header_.begin());
        return place < cells_.size() ? std::optional(cells_[place]) : std::nullopt;
    }
    std::optional<std::wstring> text(std::string_view column) const {
        const std::optional<std::string> found = cell(column);
        std::wstring wide;
        return found && ut::decodeUtf8(csv::restored(*found), wide) ? std::optional(wide)
                                                                    : std::nullopt;
    }
    /// A cell that may be a number, with a decimal point.
    std::string value(std::string_view column) const {
        std::string found = cell(column).value_or("");
        if (decimalComma_ && std::ranges::count(found, ',') == 1 &&
            found.find_first_not_of("0123456789,+- imn\"") == std::string::npos) {
            std::ranges::replace(found, ',', '.');
        }
        return found;
    }

    /// Rows of the table itself and of its line weights.
    bool readOther() {
        const std::string number = cell(columns::number).value_or("");
        if (number == columns::tableRow) {
            return readTableRow();
        }
        if (!number.starts_with(columns::lineWeightRow)) {
            return true;
        }
        const std::string digits = number.substr(columns::lineWeightRow.size());
        std::size_t index = 0;
        if (!plot_style::parseIndex(std::wstring(digits.begin(), digits.end()),
                                    CCustomLineweightTable::count, index)) {
            return stopHere(columns::number, "line weights are numbered 0 to 26");
        }
        const std::string weight = value(columns::lineWeight);
        CCustomLineweightTable& weights = editor_.table_.customLineweights();
        if (weight.empty() || weight == numberInWords(weights[index]) + " mm") {
            return true;
        }
        const EditResult done =
            lineWeightOf(std::wstring(weight.begin(), weight.end()), weights[index]);
        return done || stopHere(columns::lineWeight, done->reason);
    }

    bool readTableRow() {
        CPlotStyleTable& table = editor_.table_;
        if (const auto description = text(columns::description)) {
            table.setDescription(*description);
        }
        if (const std::string factor = value(columns::scaleFactor);
            !factor.empty() && factor != numberInWords(table.scaleFactor())) {
            const std::optional<double> number = wholeNumber(factor);
            if (!number) {
                return stopHere(columns::scaleFactor, '"' + factor + "\" is no number");
            }
            table.setScaleFactor(*number);
        }
        if (const std::string apply = value(columns::applyFactor); !apply.empty()) {
            if (apply != "on" && apply != "off") {
                return stopHere(columns::applyFactor, "write on or off, not \"" + apply + '"');
            }
            table.setApplyFactor(apply == "on");
        }
        if (const std::string units = value(columns::displayUnits); !units.empty()) {
            std::int32_t number = 0;
            if (units.find_first_not_of("-0123456789") != std::string::npos ||
                !ut::scanInt(units, number)) {
                return stopHere(columns::displayUnits, '"' + units + "\" is no whole number");
            }
            table.setCustomLineweightDisplayUnits(number);
        }
        return true;
    }

    bool readStyle() {
        const std::string number = cell(columns::number).value_or("");
        if (number == columns::tableRow || number.starts_with(columns::lineWeightRow)) {
            return true;
        }
        std::size_t place = 0;
        if (!findPlace(number, place)) {
            return false;
        }
        if (const auto [first, isNew] = rowOf_.try_emplace(place, row_); !isNew) {
            return stopHere(columns::number, "the same style stands in row " +
                                                 std::to_string(first->second) + " already");
        }
        return readNames(place) && readColors(place) && readSettings(place);
    }

    /// A style that is not there is added to the end.
    bool findPlace(const std::string& number, std::size_t& place) {
        constexpr std::size_t most = 1000000;
        const std::optional<std::wstring> name = text(columns::name);
        const std::optional<std::wstring> shown = text(columns::localizedName);
        std::size_t wanted = 0;
        bool found = false;
        if (!number.empty()) {
            if (!plot_style::parseIndex(std::wstring(number.begin(), number.end()), most, wanted) ||
                wanted == 0) {
                return stopHere(columns::number, '"' + number +
                                                     "\" is no number of a style, \"table\" or "
                                                     "\"lineweight N\"");
            }
            place = wanted - 1;
            found = place < known_;
        } else if (const auto named =
                       placeOf_.find(folded(name ? *name : innerName(shown.value_or(L""))));
                   named != placeOf_.end()) {
            place = named->second;
            found = true;
        }
        if (found) {
            return true;
        }
        const std::string_view column = number.empty() ? columns::name : columns::number;
        if (editor_.byColour_) {
            return stopHere(column, "a colour table has the styles 1 to 255, and no others");
        }
        if (styles_.size() >= mostStyles) {
            return stopHere(column, "the table would have too many styles");
        }
        place = styles_.size();
        styles_.emplace_back();
        return true;
    }

    bool readNames(std::size_t place) {
        CPlotStyle& style = styles_[place];
        const std::optional<std::wstring> name = text(columns::name);
        const std::optional<std::wstring> shown = text(columns::localizedName);
        const bool isNew = place >= known_;
        if (!isNew && name.value_or(style.name()) == style.name() &&
            shown.value_or(style.locName()) == style.locName()) {
            return true;
        }
        const std::wstring& forPeople = shown ? *shown : name.value_or(L"");
        for (const std::wstring& each : {forPeople, name.value_or(forPeople)}) {
            if (!isStyleName(each)) {
                return stopHere(shown ? columns::localizedName : columns::name,
                                quoted(each) + " is no name for a style");
            }
        }
        if (name && shown) {
            style.setNames(*name, *shown);
        } else {
            style.updateName(forPeople.c_str());
        }
        named_.push_back({place, row_});
        return true;
    }

    /// "1..9, 12"
    bool readColors(std::size_t place) {
        const std::string ranges = cell(columns::colors).value_or("");
        if (ranges.empty()) {
            return true;
        }
        if (editor_.byColour_) {
            return stopHere(columns::colors, "each colour of a colour table keeps its own style");
        }
        constexpr std::size_t most = CAciTable::count + 1;
        for (std::size_t at = 0; at < ranges.size();) {
            const std::size_t end = std::min(ranges.find(',', at), ranges.size());
            std::string range = ranges.substr(at, end - at);
            std::erase(range, ' ');
            const std::size_t dots = std::min(range.find(".."), range.size());
            const std::string last = dots == range.size() ? range : range.substr(dots + 2);
            std::size_t from = 0;
            std::size_t to = 0;
            if (!plot_style::parseIndex(
                    std::wstring(range.begin(), range.begin() + static_cast<std::ptrdiff_t>(dots)),
                    most, from) ||
                !plot_style::parseIndex(std::wstring(last.begin(), last.end()), most, to) ||
                from == 0) {
                return stopHere(columns::colors, '"' + range + "\" is no colour from 1 to 255");
            }
            for (; from <= to; ++from) {
                if (colors_[from - 1]) {
                    return stopHere(columns::colors, "colour " + std::to_string(from) +
                                                         " has a style in another row already");
                }
                colors_[from - 1] = place;
            }
            at = end + 1;
        }
        hasColors_ = true;
        return true;
    }

    bool readSettings(std::size_t place) {
        CPlotStyle& style = styles_[place];
        const CPlotStyle before = style;
        for (const StyleSetting& setting : styleSettings()) {
            if (setting.word == columns::description) {
                if (const auto description = text(columns::description)) {
                    style.setDesc(*description);
                }
                continue;
            }
            const std::string given = value(setting.word);
            // A line weight whose millimetres are others now is still the one that was meant.
            if (given.empty() || given == settingText(before, setting, weightsBefore_)) {
                continue;
            }
            std::wstring wide;
            static_cast<void>(ut::decodeUtf8(given, wide));
            const EditResult done =
                setStyle(style, setting, wide, editor_.table_.customLineweights());
            if (!done) {
                return stopHere(setting.word, done->reason);
            }
        }
        return true;
    }

    /// Once all rows are read, since rows may exchange names.
    bool checkNames() {
        if (named_.empty()) {
            return true;
        }
        std::map<std::wstring, std::size_t> names;
        std::map<std::wstring, std::size_t> shown;
        for (const CPlotStyle& style : styles_) {
            ++names[folded(style.name())];
            ++shown[folded(style.locName())];
        }
        for (const Changed& each : named_) {
            const CPlotStyle& style = styles_[each.place];
            if (names[folded(style.name())] > 1 || shown[folded(style.locName())] > 1) {
                return stopAt(each.row,
                              cell(columns::name) ? columns::name : columns::localizedName,
                              "another style is called " + quoted(style.locName()) + ", too");
            }
        }
        return true;
    }

    bool store() {
        if (styles_.size() > known_) {
            std::vector<std::size_t> origins = editor_.origins_;
            origins.resize(styles_.size(), noOrigin);
            std::vector<std::size_t> moved(known_);
            for (std::size_t place = 0; place < known_; ++place) {
                moved[place] = place;
            }
            editor_.relist(styles_, std::move(origins), moved);
        } else {
            for (std::size_t place = 0; place < known_; ++place) {
                *editor_.table_.style(place) = styles_[place];
            }
        }
        return !hasColors_ || storeColors();
    }

    bool storeColors() {
        CPlotStyleTable& table = editor_.table_;
        std::array<int, CAciTable::count> places{};
        for (std::size_t entry = 0; entry < places.size(); ++entry) {
            const CPlotStyle* style = table.ACI() == nullptr ? nullptr : table.ACI()->at(entry);
            std::optional<std::size_t> place = colors_[entry];
            for (std::size_t each = 0; !place && style != nullptr && each < table.size(); ++each) {
                if (table.style(each) == style) {
                    place = each;
                }
            }
            if (!place) {
                return stop("colour " + std::to_string(entry + 1) +
                            " has a style in no row, and all 255 colours need one");
            }
            places[entry] = static_cast<int>(*place);
        }
        editor_.mapColours(places.data());
        return true;
    }

    TableEditor& editor_;
    std::string_view bytes_;
    const CCustomLineweightTable weightsBefore_;
    std::vector<std::string> header_;
    std::vector<std::string> cells_;
    std::size_t row_ = 0;
    bool decimalComma_ = false;
    std::vector<CPlotStyle> styles_;
    /// How many of them the table has already.
    std::size_t known_ = 0;
    std::map<std::wstring, std::size_t> placeOf_;
    std::map<std::size_t, std::size_t> rowOf_;
    std::vector<Changed> named_;
    std::array<std::optional<std::size_t>, CAciTable::count> colors_;
    bool hasColors_ = false;
    std::string fault_;
};

EditResult TableEditor::readCsv(std::string_view bytes) {
    const CPlotStyleTable before = table_;
    const std::vector<std::size_t> origins = origins_;
    EditResult done = CsvTable(*this, bytes).read();
    if (!done) {
        table_ = before;
        origins_ = origins;
    }
    return done;
}

}  // namespace platen

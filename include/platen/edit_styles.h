/// Changing plot style tables: styles by their numbers or names, settings in words.
///
///     platen::SourceFile file;
///     platen::TableEditor editor(file);
///     std::vector<std::size_t> places;
///     if (file.read(L"pens.ctb") && editor.open() && editor.select(L"1-9,250", places) &&
///         editor.set(places, L"lineweight=0.35")) {
///         PiaTree tree;
///         editor.writeTo(tree.root());
///         file.write(L"pens.ctb", tree.root());
///     }
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit_files.h>
#include <platen/edit_result.h>
#include <platen/pia.h>
#include <platen/platen_api.h>
#include <platen/plotstyle.h>

namespace platen {

// --- Settings in words ---

/// One thing that a style can be set to.
struct StyleSetting {
    /// What people call it: "screening".
    std::string_view word;
    /// What files call it, which is taken as well: "screen".
    std::string_view key;
    /// What values look like, for help.
    std::string_view values;
};

/// In the order in which several take effect: what a colour becomes depends on the grayscale.
PLATEN_API std::span<const StyleSetting> styleSettings();

/// The setting of that word or key, or null.
PLATEN_API const StyleSetting* findStyleSetting(std::wstring_view word);

/// "object", "index:7" or "#ff0000": the colour that the style shows.
PLATEN_API std::string colorText(const CPlotStyle& style);

/// The value as `setStyle` takes it, UTF-8: it makes a fresh style, whose settings before this one
/// are equal, equal in this one, too. `weights` are the table's.
PLATEN_API std::string settingText(const CPlotStyle& style, const StyleSetting& setting,
                                   const CCustomLineweightTable& weights);

/// Gives a style another value. Line weights have to be among `weights`: those in millimetres
/// exactly, those in inches as they are rounded to three digits.
PLATEN_API EditResult setStyle(CPlotStyle& style, const StyleSetting& setting,
                               std::wstring_view value, const CCustomLineweightTable& weights);

/// A line weight in millimetres from "0.35", "0.35mm" or "0.014in", and whether it is between 0 and
/// 200 mm.
PLATEN_API EditResult lineWeightOf(std::wstring_view text, double& millimetres);

// --- Tables ---

/// The styles at these places as one JSON object without a line feed, UTF-8, schema
/// "platen.styles/1": every setting as `setStyle` takes it. `file` is named in it.
PLATEN_API std::string stylesJson(const std::string& file, const CPlotStyleTable& table,
                                  const std::vector<std::size_t>& places);

/// The table as a spreadsheet: a row for each style, one for the table's own settings, one for each
/// of its line weights. UTF-8; texts that would be formulas have an apostrophe before each sign
/// that could begin one, which `TableEditor::readCsv` takes off.
PLATEN_API std::string tableCsv(const CPlotStyleTable& table);

/// Styles that are equal, by their places.
using EqualStyles = std::vector<std::vector<std::size_t>>;

/// The groups of two and more styles that are equal in all settings and in their descriptions, in
/// the order of their first. The style "Normal" of a named table is in none: whatever has no other
/// style uses it.
PLATEN_API EqualStyles equalStyles(const CPlotStyleTable& table);

struct ColourTable {
    /// Null when a colour has no style.
    std::unique_ptr<CPlotStyleTable> table;
    /// What is lost, English, UTF-8.
    std::vector<std::string> lost;
};

/// Gives each colour a style of its own, like the one that a named table has for it.
PLATEN_API ColourTable colourTableOf(const CPlotStyleTable& named);

struct NamedTable {
    /// Null when the colours have no styles.
    std::unique_ptr<CPlotStyleTable> table;
    /// Each colour had the style of its own place, by which the conversion goes.
    bool inOrder = true;
};

/// Gathers equal styles of a colour table into named ones, which are called `prefix` ("Style" when
/// that is empty) and a number.
PLATEN_API NamedTable namedTableOf(const CPlotStyleTable& colours, const std::wstring& prefix = {});

/// Changes a plot style table in a file. What the file holds beside the table stays, and so do the
/// spelling of numbers and the order of items where nothing was changed.
class PLATEN_API TableEditor {
public:
    /// Borrows the file, which must be read before `open`.
    explicit TableEditor(SourceFile& file) : file_(file) {}

    /// Takes the table that the file holds. `WrongKind` when there is none, or none that can be
    /// read.
    EditResult open();

    /// The table as it is now. Settings may be changed, styles come and go by the editor.
    CPlotStyleTable& table() { return table_; }
    const CPlotStyleTable& table() const { return table_; }  ///< As it is now.
    /// Each colour has a style of its own, so that none is added and none goes.
    bool isByColour() const { return byColour_; }

    /// The places (from 0) of the styles that `text` names, ascending: numbers from 1 as in
    /// "1-9,250", which are the colours of a colour table; "=7" or "=Wall" for all that are equal
    /// to that style; a name, in which * stands for any characters and ? for one, without regard to
    /// case. A name that is there wins over numbers. None is a refusal.
    EditResult select(std::wstring_view text, std::vector<std::size_t>& places) const;
    /// The same for exactly one.
    EditResult selectOne(std::wstring_view text, std::size_t& place) const;

    /// Sets all these styles from "SETTING=VALUE", or none.
    EditResult set(const std::vector<std::size_t>& places, std::wstring_view assignment);
    /// Adds a copy of the style at `like`, or a fresh style, at the end.
    EditResult add(const std::wstring& name, const std::size_t* like = nullptr);
    /// Removes styles that no colour uses.
    EditResult remove(const std::vector<std::size_t>& places);
    /// Refused (`NameInvalid`, `NameTaken`) for no name of a style and for that of another one.
    EditResult rename(std::size_t place, const std::wstring& name);
    /// Gives the style at `to` the settings and the description of the one at `from`.
    void copy(std::size_t from, std::size_t to);
    /// Lets the first of each group stand for the others, which go. Colours follow.
    EditResult merge(const EqualStyles& groups);
    /// Sets one of the 27 line weights, which all its styles follow.
    EditResult setLineWeight(std::size_t index, std::wstring_view text);

    /// Sets whatever the bytes of a CSV file say (see `tableCsv`): columns are found by their
    /// names, and those and the rows that are missing keep the table's values. A named table gets a
    /// new style for a row whose number and name it does not have. Separators may be semicolons,
    /// then numbers may have decimal commas.
    EditResult readCsv(std::string_view bytes);

    /// Puts the items of the file as it would be now into `root`. False when it cannot be.
    bool writeTo(PiaBlock& root);
    /// The last `writeTo` differs from the file.
    bool changed() const { return changed_; }

private:
    EditResult checkName(const std::wstring& name, std::size_t own) const;
    EditResult checkStructure(const char* what) const;
    friend class CsvTable;
    /// The styles become `styles`, which were those of the file at `origins`; `movedTo` says where
    /// each of now will be.
    void relist(const std::vector<CPlotStyle>& styles, std::vector<std::size_t> origins,
                const std::vector<std::size_t>& movedTo);
    /// Each of the 255 colours gets the style of its place in `places`.
    void mapColours(const int* places);
    void rebuild(const std::vector<CPlotStyle>& styles, const int* places);

    SourceFile& file_;
    CPlotStyleTable table_;
    bool byColour_ = false;
    bool changed_ = false;
    /// Which style of the file each was.
    std::vector<std::size_t> origins_;
};

}  // namespace platen

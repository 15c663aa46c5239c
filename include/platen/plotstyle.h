/// Plot styles and plot style tables (CTB, STB).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/platen_api.h>

class PiaBlock;
class PiaInput;
class PiaReport;
class PiaSink;

namespace ut {
class CIBinStream;
class COBinStream;
}  // namespace ut

namespace plot_style {
class StyleMemory;
}  // namespace plot_style

/// One plot style: the pen settings that a plotter applies to objects that use the style.
///
/// Colours are packed 32-bit values: -1 for the object's own colour, otherwise the top byte says
/// how the rest is read: 0xC3 a colour index in the low 16 bits, 0xC2 a true colour with red in
/// bits 16-23, green in 8-15, blue in 0-7.
class PLATEN_API CPlotStyle {
public:
    /// The name by which colours of a table find the style: without white space once `updateName`
    /// made it.
    const std::wstring& name() const { return name_; }
    const std::wstring& locName() const { return localizedName_; }  ///< The name shown to people.
    const std::wstring& desc() const { return description_; }
    /// What the style's colour is, packed; the nearest of the palette when `mode_color` has none of
    /// it.
    std::int32_t color() const { return color_; }
    /// The exact colour, packed; read as the colour when the file has none.
    std::int32_t mode_color() const { return modeColor_; }
    /// Bit 0: dither; bit 1: grayscale; bit 2: explicit colour.
    std::int32_t color_policy() const { return colorPolicy_; }
    /// Pen numbers; 0 in a new style.
    ///@{
    std::int32_t pen() const { return physicalPen_; }
    std::int32_t virtualPen() const { return virtualPen_; }
    ///@}
    /// Percent.
    std::int32_t screen() const { return screen_; }
    /// `linepattern_size` in the file; 0.5 in a new style.
    double linepattern_size() const { return linePatternSize_; }
    /// A number that the plotting program gives a meaning; 31, the standard, in a new style.
    std::int32_t lineType() const { return lineType_; }
    /// `adaptive_linetype` in the file; true in a new style.
    bool isAdaptiveLinetype() const { return adaptiveLineType_; }
    /// Index into the table's custom line weights.
    std::int32_t lineWeight() const { return lineWeight_; }
    /// Numbers that the plotting program gives a meaning; 73, 4 and 5, the standard, in a new
    /// style.
    ///@{
    std::int32_t fillStyle() const { return fillStyle_; }
    std::int32_t endStyle() const { return endStyle_; }
    std::int32_t joinStyle() const { return joinStyle_; }
    ///@}
    bool isDither() const { return (colorPolicy_ & ditherBit) != 0; }
    bool isGrayScale() const { return (colorPolicy_ & grayScaleBit) != 0; }

    /// Nothing is checked; see the functions that tell the value.
    ///@{
    void setDesc(std::wstring description) { description_ = std::move(description); }
    void setScreen(std::int32_t percent) { screen_ = percent; }
    void setPen(std::int32_t pen) { physicalPen_ = pen; }
    void setVirtualPen(std::int32_t pen) { virtualPen_ = pen; }
    void setFillStyle(std::int32_t style) { fillStyle_ = style; }
    void setLineWeight(std::int32_t index) { lineWeight_ = index; }
    void setLineType(std::int32_t type) { lineType_ = type; }
    void setAdaptiveLinetype(bool adaptive) { adaptiveLineType_ = adaptive; }
    void setLinePatternSize(double size) { linePatternSize_ = size; }
    void setEndStyle(std::int32_t style) { endStyle_ = style; }
    void setJoinStyle(std::int32_t style) { joinStyle_ = style; }
    ///@}
    /// The three numbers of a colour as a file has them.
    void setPackedColor(std::int32_t color, std::int32_t modeColor, std::int32_t policy) {
        color_ = color;
        modeColor_ = modeColor;
        colorPolicy_ = policy;
    }
    /// Both names as a file has them; `updateName` makes one from the other.
    void setNames(std::wstring name, std::wstring localizedName) {
        name_ = std::move(name);
        localizedName_ = std::move(localizedName);
    }
    /// Sets or clears the dither bit only.
    void setDither(bool dither);
    /// Sets or clears the grayscale bit only.
    void setGrayScale(bool grayScale);

    /// Reads the style from its block. False at the first required key that is missing or
    /// unreadable; the fields before it keep what was read. A missing mode colour becomes the
    /// colour.
    [[nodiscard]] bool init(const PiaBlock& block);
    /// Adds the style to `parent` as a block named `index` in decimal. False when `parent` has one.
    [[nodiscard]] bool write(PiaBlock& parent, int index, bool writeModeColor) const;

    /// Compares every number, exactly; names never, descriptions when asked.
    [[nodiscard]] bool isEqual(const CPlotStyle& other, bool compareDescription) const;

    /// The localized name becomes `name` (not null), the name the same with underscores for white
    /// space.
    void updateName(const wchar_t* name);

    /// Sets the colour from a COLORREF (red in bits 0-7), or -1 for the object's own colour. An
    /// exact match in the palette keeps the bytes in COLORREF order; the nearest palette entry has
    /// red in bits 16-23. True when the colour or the mode colour changed.
    bool updateColor(int rgb);

    /// A COLORREF for display: -1 for the object's own colour; the colour index itself when the
    /// policy is exactly 1 and the colour is one by index; otherwise the colour (policy 1) or the
    /// mode colour with red and blue exchanged.
    int color2rgb() const;

    /// Reads and writes the fields in order: three texts, then the numbers. After a failed read
    /// the style is as it was.
    [[nodiscard]] bool read(ut::CIBinStream& stream);
    bool write(ut::COBinStream& stream) const;  ///< Always true.

private:
    friend class CPlotStyleTable;
    template <class Node>
    friend struct NodeKeys;

    bool writeTo(PiaSink& parent, int index, bool writeModeColor) const;

    static constexpr std::int32_t ditherBit = 1;
    static constexpr std::int32_t grayScaleBit = 2;
    static constexpr std::int32_t explicitColorBit = 4;

    std::wstring name_;
    std::wstring localizedName_;
    std::wstring description_;
    std::int32_t color_ = -1;
    std::int32_t modeColor_ = -1;
    std::int32_t colorPolicy_ = ditherBit;
    std::int32_t physicalPen_ = 0;
    std::int32_t virtualPen_ = 0;
    std::int32_t screen_ = 100;
    double linePatternSize_ = 0.5;
    std::int32_t lineType_ = 31;
    bool adaptiveLineType_ = true;
    std::int32_t lineWeight_ = 0;
    std::int32_t fillStyle_ = 73;
    std::int32_t endStyle_ = 4;
    std::int32_t joinStyle_ = 5;
};

namespace plot_style {
/// Destroys a style whose memory is its table's.
struct StyleDestroyer {
    void operator()(CPlotStyle* style) const { style->~CPlotStyle(); }
};
/// Owns a style in its table's memory.
using StylePtr = std::unique_ptr<CPlotStyle, StyleDestroyer>;
}  // namespace plot_style

/// The line weights that the styles of a table choose from, in millimetres.
class PLATEN_API CCustomLineweightTable {
public:
    static constexpr std::size_t count = 27;  ///< Line weights in a table.

    double& operator[](std::size_t index) { return weights_[index]; }
    double operator[](std::size_t index) const { return weights_[index]; }
    /// Takes all of the other's weights.
    void copy(const CCustomLineweightTable& other) { weights_ = other.weights_; }

    /// Brings a line weight into 0 to 200 mm (the same in inches when `inches`). True when it was
    /// inside, give or take the single-precision epsilon.
    static bool checkLineWeightRange(double& value, bool inches);
    /// The same for a text; one that is not a number gives false and leaves `value`.
    static bool checkLineWeightRange(double& value, const wchar_t* text, bool inches);

private:
    std::array<double, count> weights_{0.0,  0.05, 0.09, 0.10, 0.13, 0.15, 0.18, 0.20, 0.25,
                                       0.30, 0.35, 0.40, 0.45, 0.50, 0.53, 0.60, 0.65, 0.70,
                                       0.80, 0.90, 1.00, 1.06, 1.20, 1.40, 1.58, 2.00, 2.11};
};

/// Which style each colour index uses: entry i stands for colour index i + 1. Borrows the styles.
class PLATEN_API CAciTable {
public:
    static constexpr std::size_t count = 255;  ///< Colours 1 to 255.

    /// The style of entry `index` (0 to 254); null when the entry is empty or there is none.
    CPlotStyle* at(std::size_t index) const { return index < count ? styles_[index] : nullptr; }

private:
    friend class CPlotStyleTable;
    std::array<CPlotStyle*, count> styles_{};
};

/// A plot style table: colour-dependent (CTB) or named (STB).
class PLATEN_API CPlotStyleTable {
public:
    /// An empty named table, without the style "Normal"; see `create`.
    CPlotStyleTable();
    ~CPlotStyleTable();
    /// Copies settings and styles; the copy's ACI table points to the copy's styles.
    CPlotStyleTable(const CPlotStyleTable& other);
    CPlotStyleTable& operator=(const CPlotStyleTable& other);
    CPlotStyleTable(CPlotStyleTable&&) noexcept;
    CPlotStyleTable& operator=(CPlotStyleTable&&) noexcept;

    /// Reads a file; the caller owns the table. Null on any failure, and `report`, when given,
    /// says why.
    static CPlotStyleTable* read(const wchar_t* path, PiaReport* report = nullptr);
    /// Makes a table; the caller owns it. A colour-dependent one has a style for each of the 255
    /// colours, a named one the style "Normal". `description` may be null.
    static CPlotStyleTable* create(bool colorDependent, const wchar_t* description);

    /// Fills this table anew from the tree of an open input. False at the first fault, which is
    /// noted in the input's report; the table then stays as it was, here and in the next two.
    [[nodiscard]] bool init(PiaInput& input);
    /// Reads the 255 style names of an "aci_table" block; sets the uses-ACI flag on success.
    [[nodiscard]] bool initAci(const PiaBlock& block);
    /// Reads the 27 weights of a "custom_lineweight_table" block.
    [[nodiscard]] bool initCLW(const PiaBlock& block);

    /// Writes the file; the extension "ctb" gives kind CTB, any other kind STB. False for a null
    /// path or a failed write, and `report`, when given, says why.
    [[nodiscard]] bool write(const wchar_t* path, PiaReport* report = nullptr) const;
    /// Adds the table's items to `root`. False when `root` has one of them already, or when a
    /// colour of a colour-dependent table has no style.
    [[nodiscard]] bool writeToBlock(PiaBlock& root) const;
    /// Adds ACI entry `index` (0 to 254) to an "aci_table" block.
    [[nodiscard]] bool writeAciEntry(PiaBlock& block, int index) const;
    /// Adds line weight `index` (0 to 26) to a "custom_lineweight_table" block.
    [[nodiscard]] bool writeCLW(PiaBlock& block, int index) const;

    const std::wstring& description() const { return description_; }  ///< Free text.
    void setDescription(std::wstring description) { description_ = std::move(description); }
    /// `scale_factor` (1 in a new table) and `apply_factor` (false); the library only stores both.
    ///@{
    double scaleFactor() const { return scaleFactor_; }
    void setScaleFactor(double factor) { scaleFactor_ = factor; }
    bool applyFactor() const { return applyFactor_; }
    void setApplyFactor(bool apply) { applyFactor_ = apply; }
    ///@}
    /// In the file `custom_lineweight_display_units`: 0 in a new table; the library only stores it,
    /// line weights are always millimetres.
    ///@{
    std::int32_t customLineweightDisplayUnits() const { return displayUnits_; }
    void setCustomLineweightDisplayUnits(std::int32_t units) { displayUnits_ = units; }
    ///@}
    /// The 27 line weights that styles choose from.
    ///@{
    CCustomLineweightTable& customLineweights() { return customLineweights_; }
    const CCustomLineweightTable& customLineweights() const { return customLineweights_; }
    ///@}

    /// The ACI table, or null.
    const CAciTable* ACI() const { return aci_.get(); }
    /// False for a colour-dependent table whose file has no "aci_table" block, too: `hasACI()`
    /// tells it, colour i + 1 has style i, and a host that converts it writes it once and reads it
    /// again.
    bool useACI() const { return usesAci_; }
    /// The table is colour-dependent (`aci_table_available` in the file).
    bool hasACI() const { return aciAvailable_; }

    std::size_t size() const { return styles_.size(); }  ///< Number of styles.
    /// The style at `index` (0 to size - 1), owned by the table; null out of range.
    ///@{
    CPlotStyle* style(std::size_t index);
    const CPlotStyle* style(std::size_t index) const;
    ///@}
    /// The first style of that name, ignoring case, or null.
    CPlotStyle* find(const wchar_t* name) const;
    /// The index of the first style of that localized name, ignoring case, or -1.
    int findLocName(const wchar_t* name) const;

    /// False when the index is out of range, the name null or empty, or another style has that
    /// localized name.
    bool renameStyle(int index, const wchar_t* name);
    /// Inserts a copy of `model` (a default style when null) after position `after` (at the end
    /// when negative). False when the ACI table is available, `after` is out of range, or the name
    /// is null, empty or taken.
    bool addStyle(const wchar_t* name, int after, const CPlotStyle* model);
    /// Removes a style; does nothing when the ACI table is available or `index` is out of range.
    void deleteStyle(int index);

    /// Gives colour entry i the style at `indices[i]`, for all 255. Nothing happens when the
    /// uses-ACI flag is set or an index is out of range.
    void addACI(const int* indices);
    /// Drops the ACI table; false when the uses-ACI flag is set or none is available.
    bool deleteACI();

private:
    template <class Node>
    friend struct NodeKeys;
    friend PLATEN_API CPlotStyleTable* ctb2stb(const CPlotStyleTable& source,
                                               const wchar_t* prefix);
    struct Reader;

    bool writeTo(PiaSink& root) const;
    bool addAciEntry(PiaSink& block, std::size_t index) const;
    bool addLineWeight(PiaSink& block, std::size_t index) const;

    plot_style::StyleMemory& styleMemory();
    void swap(CPlotStyleTable& other) noexcept;
    /// Like the public one, but passes over the style at `except`.
    int findLocName(std::wstring_view name, std::size_t except) const;
    /// Inserts a copy of `model` at `position` (0 to size) without asking whether the name is free.
    CPlotStyle* insertStyle(const wchar_t* name, std::size_t position, const CPlotStyle& model);

    std::wstring description_;
    double scaleFactor_ = 1.0;
    bool applyFactor_ = false;
    std::int32_t displayUnits_ = 0;
    CCustomLineweightTable customLineweights_;
    bool aciMayBeWritten_ = true;
    bool usesAci_ = false;
    bool aciAvailable_ = false;
    /// Outlives the styles; made with the first.
    std::unique_ptr<plot_style::StyleMemory> styleMemory_;
    std::vector<plot_style::StylePtr> styles_;
    std::unique_ptr<CAciTable> aci_;
};

/// Turns a colour-dependent table into a named one whose styles are the distinct pen settings of
/// the source. `prefix` begins the names of the styles; null means "Style". The caller owns the
/// result. Null when the source's uses-ACI flag is not set.
PLATEN_API CPlotStyleTable* ctb2stb(const CPlotStyleTable& source, const wchar_t* prefix);

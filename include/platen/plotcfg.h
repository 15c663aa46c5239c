/// Plot configurations (PC3): which device a layout is plotted to, on which paper, and how.
/// Lengths are millimetres unless the units of a paper say otherwise.
///
/// What takes print data or a device context exists on Windows only, in the full library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/cloned_pointer.h>
#include <platen/oda.h>
#include <platen/papers.h>
#include <platen/platen_api.h>
#include <platen/pmp.h>

class CPlotCfg3;
class PiaBlock;
class PiaInput;
class PiaReport;
class wxDC;
class wxPrinterDC;
template <class Node>
struct NodeCodec;

namespace wut {
class PrintData;
}  // namespace wut

/// One user-defined paper, as both a configuration and its PMP keep it. Lengths are in `units`.
class PLATEN_API CustomPaperSize {
public:
    /// Where the paper is kept: 0 in the configuration, 1 in its PMP.
    std::int32_t source = 0;
    /// `global_name`: the name that documents know the paper by; that of the size entry in a PMP.
    std::wstring globalName;
    /// `local_name`: the name shown to people.
    std::wstring localName;
    /// An `OdDbPlotSettings::PlotPaperUnits`, or whatever number a file holds.
    std::int32_t units = OdDbPlotSettings::kMillimeters;
    double width = 0;
    double height = 0;
    /// Margins, each from its side of the paper.
    ///@{
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    ///@}

    /// False at the first key that is missing or unreadable; the fields before it are filled.
    bool initFromPc3(const PiaBlock& block);
    bool writeToPc3(PiaBlock& block) const;  ///< As `CMetaNode::write`.
    /// Takes entry `index` of the PMP's papers; false, with the paper as it was, when there is
    /// none. The unit comes from the word that begins its name: millimetres when that is none of a
    /// unit.
    bool initFromPmp(const UdmNode& udm, std::size_t index);
    /// Adds the paper to the PMP's papers: a size entry and the description entry that it names,
    /// both with names of their own, in millimetres (pixels stay pixels). Makes `udm.media` when
    /// there is none. A paper keeps its global name when that says the unit, or when it is in
    /// millimetres and has a name beside the one for people; otherwise the entry is named by unit
    /// and size.
    void writeToPmp(UdmNode& udm) const;

    /// Lengths are equal within 1e-10, names exactly.
    bool operator==(const CustomPaperSize& other) const;
};

/// The "media" block: paper, printable bounds, copies, destination, custom papers.
class PLATEN_API CMediaNode {
public:
    class PLATEN_API CSizeNode {
    public:
        class PLATEN_API CMediaDescriptionNode {
        public:
            /// Width and height of the paper.
            class PLATEN_API CMediaBoundsNode {
            public:
                /// `urx`, `ury` in the file: width and height in millimetres, in pixels when not
                /// `dimensional`.
                ///@{
                double urx = 0;
                double ury = 0;
                ///@}

                bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
                bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
            };

            /// Corners of the printable area, from the paper's lower left corner; millimetres, in
            /// pixels when not `dimensional`.
            ///@{
            double printableBoundsLlx = 0;
            double printableBoundsLly = 0;
            double printableBoundsUrx = 0;
            double printableBoundsUry = 0;
            ///@}
            /// Of the area inside the printable bounds, in their unit squared.
            double printableArea = 0;
            /// False for pixels.
            bool dimensional = true;
            /// The whole paper, without margins taken off.
            CMediaBoundsNode mediaBounds;

            bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
            bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
        };

        /// The chosen paper: a name of the printer, canonical name of a built-in paper, or global
        /// name of a custom one.
        std::wstring name;
        /// Kept as read; it changes nothing here.
        std::int32_t group = 0;
        /// Kept as read; `dmOrientation` is what turns the paper.
        bool landscapeMode = false;
        /// -1.0 for none, which is not written.
        double longplotReduction = -1.0;
        /// Percent; 100 is not written.
        std::int32_t dmScale = 100;
        /// Bounds of the chosen paper.
        CMediaDescriptionNode mediaDescription;

        bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
        /// Stores the name; true when it is the one that was there already. False for null as well,
        /// and the name stays.
        bool setName(const wchar_t* newName);
    };

    class PLATEN_API CDestinationNode {
    public:
        /// "Default" when it was made from print data.
        std::wstring name;
        /// 1 for collated copies, 0 for not collated.
        std::int32_t collatingType = 0;
        /// "Regular" or "None", as `setCollating` stores it; not used otherwise.
        std::wstring collatingName;

        bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
        /// Type 1 "Regular" or 0 "None"; true when the type changed.
        bool setCollating(bool on);
    };

    class PLATEN_API CustomPapersNode {
    public:
        /// In the order of the file, where entry i is the block named i.
        std::vector<CustomPaperSize> papers;

        /// Every child block yields a paper, however much of it could be read. Always true.
        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;  ///< Always true.
    };

    /// How the paper was chosen; kept as read.
    std::int32_t selectionMethod = 2;
    /// Read from "type" or, when that is missing, from "type_name"; written as "type".
    std::wstring type;
    /// As in a device mode: 1 portrait, 2 landscape.
    std::int32_t dmOrientation = 1;
    /// Corners of the printable area of the paper as it is used, in millimetres or pixels.
    ///@{
    double actualPrintableBoundsLlx = 0;
    double actualPrintableBoundsLly = 0;
    double actualPrintableBoundsUrx = 0;
    double actualPrintableBoundsUry = 0;
    ///@}
    /// Applied to print data from 1 to 32767, otherwise left out with a warning.
    std::int32_t numberOfCopies = 1;
    /// The chosen paper.
    CSizeNode size;
    /// Without one, copies count as collated.
    std::optional<CDestinationNode> destination;
    /// Without one there are none, and no empty block is written.
    std::optional<CustomPapersNode> customPapers;

    /// As that of `CMetaNode`. An unreadable "destination" or "custom_papers" is dropped.
    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.

    /// True when a bound is below 0.0001 or the printable area below 1e-8.
    bool emptyBounds() const;
#ifdef _WIN32
    /// Takes paper and printable bounds from a printer, the margins as symmetric; true when one
    /// changed. False as well, with everything as it was, for null or a context that has no page.
    bool setBounds(const wxPrinterDC* dc);
#endif
    /// Turns the paper by a quarter.
    void swapBounds();
    /// Fills size name, media bounds, printable bounds and area and the actual printable bounds
    /// from a paper: millimetres, or pixels as they are (then the dimensional flag is false). The
    /// printable bounds are the paper without its margins. The name is the global one of a custom
    /// paper, the canonical one of a built-in paper. True when it changed.
    bool applyPaper(const CustomPaperSize& paper);
    bool applyPaper(const wut::PaperSizeInfo& paper);  ///< A built-in paper.
};

/// The "io" block: where output goes.
class PLATEN_API CIoNode {
public:
    /// Kept as read; its numbers have no meaning here.
    std::int32_t type = 2;
    /// Where the output goes; kept as read.
    std::wstring pathname;
    /// `allsysvalid` in the file; kept as read.
    bool allSysValid = false;
    /// Output goes to a file. From a new printer configuration: its port is "FILE" or "FILE:".
    bool plotToFile = false;

    bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
    bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
};

/// The "res_color_mem" block: colours and resolution of the device.
class PLATEN_API CResColorMemNode {
public:
    /// Dots per inch.
    class PLATEN_API CResolutionNode {
    public:
        /// Such as "300x300" or "DMRES_HIGH_None"; one that begins with a quality ("DMRES_HIGH",
        /// "DMRES_MEDIUM", "DMRES_LOW", "DMRES_DRAFT") counts instead of the numbers.
        std::wstring name;
        /// Of the device; these go into print data, when not 0. Optional in the file.
        ///@{
        double physResolutionX = 1;
        double physResolutionY = 1;
        ///@}
        /// The physical ones again, after either `set`.
        ///@{
        double addrResolutionX = 1;
        double addrResolutionY = 1;
        ///@}
        /// The physical ones again, when taken from print data; `set(long)` leaves them.
        ///@{
        double effectiveResolutionX = 1;
        double effectiveResolutionY = 1;
        ///@}

        bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
        /// A square resolution. The effective resolutions stay as they are: callers may rely on it.
        void set(long dpi);
#ifdef _WIN32
        /// Takes the resolution of print data; true when anything changed. A quality without dots
        /// per inch needs the printer's context: without one everything stays as it was.
        bool set(const wut::PrintData& data, const wxDC* dc);
        /// Puts the resolution into print data.
        void get(wut::PrintData& data) const;
#endif
    };

    /// Kept as read.
    std::wstring name;
    /// Of the device. 1 for a printer with 32 bits a dot.
    std::int32_t numColors = 256;
    /// Bits a dot.
    std::int32_t colorDepth = 8;
    /// Negative for a scheme of grays.
    std::int32_t numUnditheredColors = 256;
    /// Kept as read; its numbers have no meaning here.
    std::int32_t colorSystem = 0;
    /// As in a device mode: 1 monochrome, 2 colour.
    std::int32_t dmColor = 1;
    /// Colour management, as in a device mode; 0 is not written.
    ///@{
    std::int32_t icmMethod = 0;
    std::int32_t icmIntent = 0;
    ///@}
    /// `ism_max`, `ole_max` in the file: maxima that are kept as read; -1 is not written.
    ///@{
    std::int32_t ismMax = 6;
    std::int32_t oleMax = 6;
    ///@}
    /// Kept as read; 0 is not written.
    ///@{
    std::int32_t hardSoft = 0;
    std::int32_t preference = 50;
    ///@}
    /// False: lines that cross merge their colours. Absent counts as true.
    std::optional<bool> linesOverwrite;
    /// Kept as read; not written when absent.
    std::optional<bool> colorMono;
    /// Of the device.
    CResolutionNode resolution;

    bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
    bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
};

/// The "custom" block: named properties of drivers and built-in devices.
class PLATEN_API CCustomNode {
public:
    /// Fails at a child block that is not a "name" and a value; the node is then as it was.
    bool init(const PiaBlock& block);
    /// Numbers the properties from 0: numbers, binaries, strings, then booleans. False when the
    /// block has such a child already.
    bool write(PiaBlock& block) const;

    /// The value of a name; false, with `value` as it was, when it is absent or does not convert.
    /// A null name is that of no property, here and below.
    ///@{
    bool get(bool& value, const wchar_t* name) const;
    /// As `ut::scanInt` reads it: a packed colour of 32 bits converts, too.
    bool get(int& value, const wchar_t* name) const;
    bool get(long& value, const wchar_t* name) const;
    /// The same 32 bits without a sign.
    bool get(unsigned long& value, const wchar_t* name) const;
    /// The nearest single-precision value: callers may rely on the narrowing.
    bool get(double& value, const wchar_t* name) const;
    /// The text.
    bool getStr(std::wstring& value, const wchar_t* name) const;
    /// The hexadecimal text.
    bool getBin(std::wstring& value, const wchar_t* name) const;
    ///@}

    /// Stores a value. A name that is absent is added only with `create`, otherwise false.
    ///@{
    bool set(bool value, const wchar_t* name, bool create);
    bool set(int value, const wchar_t* name, bool create);
    /// The lowest 32 bits.
    bool set(long value, const wchar_t* name, bool create);
    bool set(unsigned long value, const wchar_t* name, bool create);
    /// In fixed notation with six decimals.
    bool set(double value, const wchar_t* name, bool create);
    bool setStr(const std::wstring& value, const wchar_t* name, bool create);
    /// `hexText` is stored as it is.
    bool setBin(const std::wstring& hexText, const wchar_t* name, bool create);
    ///@}

    /// White when it is not stored.
    OdCmColor getRasterBkgColor() const;
    /// Makes the property when it is absent.
    void setRasterBkgColor(const OdCmColor& color);
    /// True when it is not stored.
    bool getPdfOpenInViewer() const;
    /// Makes the property when it is absent.
    void setPdfOpenInViewer(bool open);

    /// In the order of UTF-16 units, so that files come out the same on every system.
    struct PLATEN_API NameOrder {
        using is_transparent = void;
        bool operator()(std::wstring_view left, std::wstring_view right) const;
    };
    /// Property names and their values as texts.
    using Texts = std::map<std::wstring, std::wstring, NameOrder>;
    /// Property names and their values.
    using Flags = std::map<std::wstring, bool, NameOrder>;

    const Texts& strings() const { return strings_; }  ///< The text properties.
    /// The binary properties, as hexadecimal texts.
    const Texts& binaries() const { return binaries_; }
    /// The texts as stored, whether they convert or not.
    const Texts& numbers() const { return numbers_; }
    const Flags& bools() const { return bools_; }  ///< The boolean properties.

private:
    friend struct NodeCodec<CCustomNode>;

    bool setNum(std::wstring text, const wchar_t* name, bool create);

    Texts strings_;
    Texts binaries_;
    Texts numbers_;
    Flags bools_;
};

/// A file output that needs no printer.
class PLATEN_API BuiltInPlotDevice {
public:
    /// Numbers the devices in the order of `s_cBuiltInPlotDevices`.
    enum Type : std::int32_t { Pdf = 0, Bmp = 1, Png = 2, Jpg = 3, Tif = 4 };

    /// Names of the devices, as `CPlotCfg3::create` takes them.
    ///@{
    static constexpr const wchar_t* pdfName = L"Print As PDF";
    static constexpr const wchar_t* bmpName = L"Print As BMP";
    static constexpr const wchar_t* pngName = L"Print As PNG";
    static constexpr const wchar_t* jpgName = L"Print As JPG";
    static constexpr const wchar_t* tifName = L"Print As TIF";
    ///@}
    /// For hosts that list "no device", too; it is the name of none.
    static constexpr const wchar_t* noneName = L"None";

    /// Which of the five.
    Type type = Pdf;
    /// As users see it; never translated.
    OdString name;
    /// Of output files, without a dot.
    OdString extension;
    /// In the language that the user had when the library was loaded.
    OdString description;
    /// Stored as the "canonical_model_name" of configurations.
    OdString modelName;

    /// The five devices in the order of `Type`. Made when the library is loaded, never changed.
    static const std::vector<BuiltInPlotDevice> s_cBuiltInPlotDevices;
    /// The entry of that name, ignoring case, or null. It lives as long as the library.
    static const BuiltInPlotDevice* getByName(const OdString& name);
    /// The entry of that model name, ignoring case, or null.
    static const BuiltInPlotDevice* getByModelName(const OdString& modelName);
};

/// What documents need from the print system. Printing registers one when the library loads;
/// without one there are no printers.
class PLATEN_API PrinterSystem {
public:
    virtual ~PrinterSystem();

    /// The default printer's name; empty when there is none.
    virtual std::wstring defaultPrinter() const = 0;
    /// True when the printer can be opened.
    virtual bool hasPrinter(const std::wstring& name) const = 0;
    /// Fills a fresh configuration for a printer that can be opened: description, custom
    /// properties, paper and all that its print data say. The meta node names printer and driver
    /// already. False when the settings cannot be taken.
    virtual bool fillNew(CPlotCfg3& config, const std::wstring& printer) const = 0;
    /// Takes the printer's own defaults; false when that fails. `changed` says whether a field got
    /// another value.
    virtual bool reset(CPlotCfg3& config, bool& changed) const = 0;
    /// Moves the configuration to a printer of its driver when its own is gone; true when it did.
    virtual bool resolveByDriver(CPlotCfg3& config) const = 0;
};

/// Registers the print system (borrowed; null for none) and returns the one before.
PLATEN_API const PrinterSystem* registerPrinterSystem(const PrinterSystem* system);

/// One plot configuration. Copies share nothing.
class PLATEN_API CPlotCfg3 {
public:
    /// Largest paper sides of the built-in devices.
    ///@{
    static constexpr double MAX_IMG_PAPER_DIM = 320000.0;
    static constexpr double MAX_PDF_PAPER_DIM = 5080.0;
    ///@}

    CPlotCfg3(const CPlotCfg3& other);
    CPlotCfg3& operator=(const CPlotCfg3& other);
    CPlotCfg3(CPlotCfg3&&) noexcept;
    CPlotCfg3& operator=(CPlotCfg3&&) noexcept;
    ~CPlotCfg3();

    /// The blocks of the file; all four are required.
    ///@{
    CMetaNode meta;
    CMediaNode media;
    CIoNode io;
    CResColorMemNode resColorMem;
    ///@}
    /// Properties of the driver or built-in device; absent when the file has none, or none that can
    /// be read.
    std::optional<CCustomNode> custom;

    /// Reads a file; the caller owns the document. Null when it cannot be read, and `report`, when
    /// given, says why. `printerChanged` says whether it was moved to another printer of its
    /// driver.
    static CPlotCfg3* read(const wchar_t* path, bool& printerChanged, PiaReport* report = nullptr);
    /// The document in an open input as it stands: no default printer takes its place and no PMP is
    /// read. Null when it cannot be read, which is noted in the input's report.
    static std::unique_ptr<CPlotCfg3> fromInput(PiaInput& input, bool& printerChanged);
    /// A configuration for a built-in device or an installed printer; the caller owns it. Null when
    /// there is neither, which is logged.
    static CPlotCfg3* create(const wchar_t* deviceName);
    /// Writes the PMP, then the configuration. A PMP that cannot be written to its own path goes
    /// into the folder "PMP" beside `path`, or beside `path`; its failure fails nothing. False for
    /// a null path or a failed write.
    bool write(const wchar_t* path, PiaReport* report = nullptr);
    /// Adds the blocks to `root`. False when it has one of them already.
    bool writeToBlock(PiaBlock& root) const;
    /// Where `write` to `path` puts a PMP that has no file of its own yet: in the folder "PMP"
    /// beside `path` when there is one, otherwise beside `path`; named as the PMP or, without a
    /// name, as `path`. A full path; empty without a PMP.
    std::wstring placeForPmp(std::wstring_view path) const;
    /// Takes the printer's own defaults; true when that changed anything.
    bool setToDefault();

    /// The attached PMP, or null.
    ///@{
    PlotModelParam* pmp() { return pmp_.get(); }
    const PlotModelParam* pmp() const { return pmp_.get(); }
    ///@}
    /// Takes ownership; the meta node names it.
    void attachPMP(PlotModelParam* pmp);
    /// Destroys the PMP; the meta node names none then.
    void detachPMP();

    /// The built-in device that the configuration drives, or null for a printer.
    const BuiltInPlotDevice* builtInDevice() const { return builtInDevice_; }
    /// False for null, too.
    static bool isBuiltInPDF(const CPlotCfg3* config);
    /// True for BMP, PNG, JPG and TIF; false for null, too.
    static bool isBuiltInImage(const CPlotCfg3* config);

#ifdef _WIN32
    /// Puts the settings into print data that were made for the configuration's printer, which must
    /// be installed. `report`, when given, says why it failed and, as warnings, which stored
    /// settings were not applied: the document keeps them all. On false `data` is as it was, unless
    /// the report says `SettingsRefused`: then it has the settings, but the driver has not merged
    /// them.
    bool toPrintData(wut::PrintData& data, PiaReport* report = nullptr) const;
    /// Takes the settings of print data for the configuration's printer, whose name, in any case,
    /// is `printerName`. With `newConfig` properties that the document lacks are made. `changed`
    /// says whether a field got another value. On false the fields up to the fault are those of the
    /// print data, and `report` says what it was.
    bool fromPrintData(wut::PrintData& data, const std::wstring& printerName, bool newConfig,
                       bool& changed, PiaReport* report = nullptr);
#endif

    /// The colour schemes of an image device, translated, and the index of the current one. Empty
    /// for others, and `current` stays.
    OdArray<OdString> getAvailableColorSchemes(int& current) const;
    /// Takes entry `index` of the colour schemes or, without `color`, of the gray ones. An index
    /// beyond them keeps depth and number of colours. Does nothing unless the device is an image
    /// device.
    void setColorScheme(int index, bool color);

    /// The configuration's own papers, then those of its PMP.
    void getCustomPaperSizes(std::vector<CustomPaperSize>& papers) const;
    /// Replaces them; a paper goes where its source says. A PMP is attached when one is needed.
    void setCustomPaperSizes(const std::vector<CustomPaperSize>& papers);
    /// Chooses a paper: the custom papers come first, then those of the PDF or image devices.
    /// `changed` is set when the size name changed, and stays otherwise.
    void setPaperSize(std::size_t index, bool pdf, bool& changed);
    /// Largest paper sides: of the PMP or of the built-in device; 0 by 0 for a printer.
    void getMaxPaperDimensions(double& width, double& height) const;

private:
    CPlotCfg3();

    bool init(PiaInput& input, bool& printerChanged);
    static std::unique_ptr<CPlotCfg3> createForBuiltInDevice(const wchar_t* name);
    static std::unique_ptr<CPlotCfg3> createForPrinter(const std::wstring& printer);
    /// Notes the reason of a null in `report`.
    static std::unique_ptr<CPlotCfg3> createForDefaultPrinter(PiaReport& report);
    /// Looks for the PMP that the meta node names, in the folder of `path` among others.
    void readPmp(const wchar_t* path, PiaReport& report);
    /// Writes the PMP to its own path or near `path`, and has the meta node name it.
    bool writePmp(std::wstring_view path);
    void checkIfBuiltInDevice();
    bool resolvePrinterByDriver();
    void initMaxPaperDimensions();

    platen::ClonedPointer<PlotModelParam> pmp_;
    /// In the static table.
    const BuiltInPlotDevice* builtInDevice_ = nullptr;
    std::uint32_t devModeFields_ = 0;
    std::uint32_t ditherType_ = 1;
    std::int16_t duplex_ = 1;
    /// True when the document was read from a version-2 file or created.
    bool oldFormatInput_ = true;
};

namespace wut {

/// The PDF export settings that a configuration stores.
class PLATEN_API ExportPdfOptions {
public:
    /// `View_New_File`.
    bool openInViewer = true;
    /// `PdfEmbeddedTtf`: fonts go into the file.
    bool embedTrueType = true;
    /// `PdfExportHyperlinks`: links go into the file.
    bool exportHyperlinks = true;
    /// `PdfCreateBookmarks`: bookmarks go into the file.
    bool createBookmarks = true;
    /// `PdfImageAntiAlias`: images are smoothed.
    bool imageAntiAlias = true;
    /// `PdfImageCompression`: a number that only the exporter gives a meaning.
    std::int32_t imageCompression = 0;
    /// Dots per inch.
    std::int32_t imageDpi = 300;
    /// `PdfPdfA`: the PDF/A level, likewise; 0 by default.
    std::int32_t pdfA = 0;
    /// `PdfLayersSetting`, likewise.
    std::int32_t layersSetting = 1;
    /// The opposite of `lines_overwrite` in "res_color_mem".
    bool linesMerge = false;
    /// The opposite of `truetype_as_text` in "meta".
    bool trueTypeAsGeometry = false;
    /// Dots per inch.
    std::int32_t resolution = 2400;

    ExportPdfOptions() = default;
    explicit ExportPdfOptions(const CPlotCfg3& config);  ///< See `readFromPc3`.

    /// Takes what the configuration stores. What its "custom" block lacks stays as it is, but for
    /// `openInViewer`, which becomes true; without a block that stays, too.
    void readFromPc3(const CPlotCfg3& config);
    /// Stores all of it, and makes the "custom" block when there is none. The effective resolutions
    /// stay.
    void writeToPc3(CPlotCfg3& config) const;
};

}  // namespace wut

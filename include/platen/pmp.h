/// Plot model parameters (PMP): the user-defined papers, their calibration and the device limits
/// that a plot configuration can attach. Lengths are millimetres.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/oda.h>
#include <platen/platen_api.h>

class PiaBlock;
class PiaInput;
class PiaReport;

/// The "meta" block that plot configurations and plot model parameters share: which driver and
/// device model a configuration was made for, and the names of the Windows printer.
class PLATEN_API CMetaNode {
public:
    /// Name or full path of the attached PMP file; empty when there is none.
    std::wstring userDefinedModelPathname;
    /// Kept as read.
    std::wstring userDefinedModelBasename;
    /// The driver that the configuration was made for: its file, version and words for people.
    ///@{
    std::wstring driverPathname;
    std::wstring driverVersion;
    std::wstring driverTagLine;
    ///@}
    /// Numbers of the driver; 1 and 1 in a new configuration for a printer, otherwise kept as read.
    ///@{
    std::int32_t toolkitVersion = 0;
    std::int32_t driverType = 0;
    ///@}
    /// The device family: "System" in a new configuration for a printer.
    std::wstring canonicalFamilyName;
    /// `show_custom_first`: kept as read.
    bool showCustomFirst = false;
    /// Text in TrueType fonts is plotted as text, not as outlines.
    bool truetypeAsText = true;
    /// The model name by which a built-in device is recognised.
    std::wstring canonicalModelName;
    /// The device family in words for people.
    std::wstring localizedFamilyName;
    /// The device's name for people; of a built-in device its name, such as "Print As PDF".
    std::wstring localizedModelName;
    /// The device only plots to files.
    bool fileOnly = false;
    /// Kept as read.
    std::wstring modelAbilities;
    /// Kept as read.
    std::wstring udmDescription;
    /// The Windows printer's name; not written when empty.
    std::wstring winDeviceName;
    /// The printer's driver by name, by which another printer is found when that one is gone; not
    /// written when empty.
    std::wstring winDriverName;
    /// The printer's name again in a new configuration; otherwise kept as read.
    ///@{
    std::wstring shortNetName;
    std::wstring friendlyNetName;
    ///@}
    /// The driver's version in its device mode; 0, which is not written, when not known.
    std::int32_t dmDriverVersion = 0;
    /// When true, reading the file gives a configuration for the current default printer instead.
    std::optional<bool> defaultSystemCfg;
    /// Kept as read; not written when empty.
    ///@{
    std::wstring platform;
    std::wstring locale;
    ///@}
    /// Free text: the printer's comment or the built-in device's description; not written when
    /// empty.
    std::wstring configDescription;
    /// Kept as read; not written when absent.
    std::optional<bool> configAutospool;

    /// False at the first required key that is missing or unreadable; the fields before it are
    /// filled.
    bool init(const PiaBlock& block);
    /// Adds the keys to `block`. False when it has an item of the same name and type already.
    bool write(PiaBlock& block) const;
};

/// What a device calls its papers: the "size" list.
class PLATEN_API PmpSizeNode {
public:
    class PLATEN_API PaperSize {
    public:
        /// Kept as read.
        std::int32_t capsType = 4;
        /// The name that documents know the paper by.
        std::wstring name;
        /// The name shown to people.
        std::wstring localizedName;
        /// Names the entry of the description list that has the dimensions.
        std::wstring mediaDescriptionName;
        /// Kept as read.
        std::int32_t mediaGroup = 0;
        /// True in papers made here that are wider than high; kept as read otherwise.
        bool landscapeMode = false;

        /// False at the first key that is missing or unreadable; the fields before it are filled.
        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
    };

    /// In the order of the file.
    std::vector<PaperSize> papers;

    /// Every child block yields an entry, however much of it could be read. Always true.
    bool init(const PiaBlock& block);
    /// Entry i becomes the block named i. Always true.
    bool write(PiaBlock& block) const;
    /// Gives the last entry a name of its own by a suffix "_1", "_2", ...; see `makeLastNameUnique`
    /// of the description list, which follows the same rule.
    void makeLastNameUnique();
};

/// The dimensions and printable areas of papers: the "description" list.
class PLATEN_API PmpDescriptionNode {
public:
    class PLATEN_API PaperSizeDescription {
    public:
        /// Kept as read.
        std::int32_t capsType = 2;
        /// `PaperSize::mediaDescriptionName` refers to it.
        std::wstring name;
        /// Width and height of the paper.
        ///@{
        double mediaBoundsUrx = 0;
        double mediaBoundsUry = 0;
        ///@}
        /// Corners of the printable area.
        ///@{
        double printableBoundsLlx = 0;
        double printableBoundsLly = 0;
        double printableBoundsUrx = 0;
        double printableBoundsUry = 0;
        ///@}
        /// Of the printable area, in square millimetres or square pixels.
        double printableArea = 0;
        /// False for pixels.
        bool dimensional = true;

        bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
    };

    /// In the order of the file.
    std::vector<PaperSizeDescription> papers;

    bool init(const PiaBlock& block);   ///< As that of `PmpSizeNode`.
    bool write(PiaBlock& block) const;  ///< As that of `PmpSizeNode`.
    /// When an entry before the last has its name (ignoring case), the last becomes "NAME_k" with
    /// the smallest k from 1 that no entry between the first such entry and the last has. Entries
    /// before the first one of that name are not compared: callers may rely on it.
    void makeLastNameUnique();
};

/// The "mod" block: what the driver can do, and its own papers.
class PLATEN_API ModNode {
public:
    /// Copies share the two lists.
    class PLATEN_API MediaNode {
    public:
        /// Kept as read.
        ///@{
        std::wstring abilities;
        std::wstring capsState;
        std::wstring uiOwner;
        ///@}
        /// The largest paper; 0 for none said. Reading a configuration of a built-in device fills
        /// such a 0 with the device's limits.
        ///@{
        double sizeMaxX = 0;
        double sizeMaxY = 0;
        ///@}
        /// Not written when empty.
        std::wstring defaultSize;
        /// May be null.
        ///@{
        std::shared_ptr<PmpSizeNode> size;
        std::shared_ptr<PmpDescriptionNode> description;
        ///@}

        /// As that of `CMetaNode`. An unreadable "size" or "description" is dropped.
        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.

        /// The margins of a paper of the size list, in inches or (any other unit) millimetres.
        /// False, with the outputs as they were, when it or its description is not there.
        bool getMargins(const std::wstring& name, double& left, double& right, double& top,
                        double& bottom, OdDbPlotSettings::PlotPaperUnits units) const;
    };

    /// The driver's own papers.
    MediaNode media;

    bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
    bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
};

/// The "udm" block: calibration and user-defined papers. Copies share the papers.
class PLATEN_API UdmNode {
public:
    class PLATEN_API CalibrationNode {
    public:
        /// `_x`, `_y` in the file: factors.
        ///@{
        double x = 1;
        double y = 1;
        ///@}

        bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
    };

    class PLATEN_API MediaNode {
    public:
        /// Millimetres; 0 for no limit. Optional in the file.
        double maxRollHeight = 0;
        /// The user-defined papers: their names, and their dimensions.
        ///@{
        PmpSizeNode size;
        PmpDescriptionNode description;
        ///@}

        bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
    };

    /// As it was stored; the library does not apply it.
    CalibrationNode calibration;
    /// May be null.
    std::shared_ptr<MediaNode> media;

    /// As that of `CMetaNode`. An unreadable "media" is dropped.
    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
};

/// The "hidden" block.
class PLATEN_API HiddenNode {
public:
    /// Copies share the list.
    class PLATEN_API MediaNode {
    public:
        /// A paper's name; not written when empty.
        std::wstring defaultSize;
        /// May be null.
        std::shared_ptr<PmpSizeNode> size;

        /// As that of `CMetaNode`. An unreadable "size" is dropped.
        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
    };

    /// Papers like those in `ModNode`; kept as read.
    MediaNode media;

    bool init(const PiaBlock& block);   ///< As that of `CMetaNode`.
    bool write(PiaBlock& block) const;  ///< As that of `CMetaNode`.
};

/// One PMP file. A copy shares the user-defined papers and the hidden node with its source.
class PLATEN_API PlotModelParam : public CMetaNode {
public:
    /// What the driver can do.
    ModNode mod;
    /// What users added.
    UdmNode udm;
    /// May be null.
    std::shared_ptr<HiddenNode> hidden;
    /// Full path of the file last read or written; empty for a created document.
    OdString filePath;

    /// The full path of a file: the name as it is, then its last component in each folder and in
    /// the folder's sub-folder "PMP". The first folder is the configuration's: where a relative
    /// name leads to a file there and to another one from the current folder, the one beside the
    /// configuration is taken, and `report`, when given, warns of it. Empty when the file is
    /// nowhere, and `report` says where it was looked for.
    static std::wstring find(std::wstring_view name, const OdArray<OdString>& folders,
                             PiaReport* report = nullptr);
    /// Finds and reads a file; the caller owns the document. Null when it is not found or cannot be
    /// read, and `report`, when given, says why.
    static PlotModelParam* read(const wchar_t* name, const OdArray<OdString>& folders,
                                PiaReport* report = nullptr);
    /// A document for a configuration; the caller owns it. Its description is empty and its
    /// autospool flag absent.
    static PlotModelParam* create(const CMetaNode& meta);
    /// A copy that shares nothing.
    std::unique_ptr<PlotModelParam> clone() const;
    /// Writes the file and, on success, takes `path` as its own. False for a null path.
    bool write(const wchar_t* path, PiaReport* report = nullptr);

    /// Fills the document from an open input. False when "meta", "mod" or "udm" is missing or
    /// unreadable, which is noted in the input's report; an unreadable "hidden" is dropped.
    bool init(PiaInput& input);
    /// Adds the blocks to `root`. False when it has one of them already.
    bool writeToBlock(PiaBlock& root) const;
};

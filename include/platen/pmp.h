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
    std::wstring userDefinedModelBasename;
    std::wstring driverPathname;
    std::wstring driverVersion;
    std::wstring driverTagLine;
    std::int32_t toolkitVersion = 0;
    std::int32_t driverType = 0;
    std::wstring canonicalFamilyName;
    bool showCustomFirst = false;
    bool truetypeAsText = true;
    /// The model name by which a built-in device is recognised.
    std::wstring canonicalModelName;
    std::wstring localizedFamilyName;
    std::wstring localizedModelName;
    /// The device only plots to files.
    bool fileOnly = false;
    std::wstring modelAbilities;
    std::wstring udmDescription;
    std::wstring winDeviceName;
    std::wstring winDriverName;
    std::wstring shortNetName;
    std::wstring friendlyNetName;
    std::int32_t dmDriverVersion = 0;
    /// When true, reading the file gives a configuration for the current default printer instead.
    std::optional<bool> defaultSystemCfg;
    std::wstring platform;
    std::wstring locale;
    std::wstring configDescription;
    std::optional<bool> configAutospool;

    /// False at the first required key that is missing or unreadable; the fields before it are
    /// filled.
    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;
};

/// What a device calls its papers: the "size" list.
class PLATEN_API PmpSizeNode {
public:
    class PLATEN_API PaperSize {
    public:
        std::int32_t capsType = 4;
        std::wstring name;
        std::wstring localizedName;
        /// Names the entry of the description list that has the dimensions.
        std::wstring mediaDescriptionName;
        std::int32_t mediaGroup = 0;
        bool landscapeMode = false;

        /// False at the first key that is missing or unreadable; the fields before it are filled.
        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;
    };

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
        std::int32_t capsType = 2;
        std::wstring name;
        /// Width and height of the paper.
        double mediaBoundsUrx = 0;
        double mediaBoundsUry = 0;
        /// Corners of the printable area.
        double printableBoundsLlx = 0;
        double printableBoundsLly = 0;
        double printableBoundsUrx = 0;
        double printableBoundsUry = 0;
        double printableArea = 0;
        /// False for pixels.
        bool dimensional = true;

        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;
    };

    std::vector<PaperSizeDescription> papers;

    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;
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
        std::wstring abilities;
        std::wstring capsState;
        std::wstring uiOwner;
        double sizeMaxX = 0;
        double sizeMaxY = 0;
        /// Not written when empty.
        std::wstring defaultSize;
        /// May be null.
        std::shared_ptr<PmpSizeNode> size;
        std::shared_ptr<PmpDescriptionNode> description;

        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;

        /// The margins of a paper of the size list, in inches or (any other unit) millimetres.
        /// False, with the outputs as they were, when it or its description is not there.
        bool getMargins(const std::wstring& name, double& left, double& right, double& top,
                        double& bottom, OdDbPlotSettings::PlotPaperUnits units) const;
    };

    MediaNode media;

    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;
};

/// The "udm" block: calibration and user-defined papers. Copies share the papers.
class PLATEN_API UdmNode {
public:
    class PLATEN_API CalibrationNode {
    public:
        double x = 1;
        double y = 1;

        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;
    };

    class PLATEN_API MediaNode {
    public:
        double maxRollHeight = 0;
        PmpSizeNode size;
        PmpDescriptionNode description;

        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;
    };

    CalibrationNode calibration;
    /// May be null.
    std::shared_ptr<MediaNode> media;

    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;
};

/// The "hidden" block.
class PLATEN_API HiddenNode {
public:
    /// Copies share the list.
    class PLATEN_API MediaNode {
    public:
        std::wstring defaultSize;
        std::shared_ptr<PmpSizeNode> size;

        bool init(const PiaBlock& block);
        bool write(PiaBlock& block) const;
    };

    MediaNode media;

    bool init(const PiaBlock& block);
    bool write(PiaBlock& block) const;
};

/// One PMP file. A copy shares the user-defined papers and the hidden node with its source.
class PLATEN_API PlotModelParam : public CMetaNode {
public:
    ModNode mod;
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
    bool writeToBlock(PiaBlock& root) const;
};

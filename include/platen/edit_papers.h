/// The custom papers of a plot configuration and its PMP, or of a PMP alone.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/edit_files.h>
#include <platen/edit_result.h>
#include <platen/oda.h>
#include <platen/pia.h>
#include <platen/platen_api.h>
#include <platen/plotcfg.h>

namespace platen {

/// What saving the papers of a file did.
struct PLATEN_API SavedPapers {
    struct Document {
        /// Of its file.
        std::wstring path;
        /// How writing it went.
        WriteResult result;
        /// Of all its lists.
        std::size_t papers = 0;
        /// Items of the file before that are not in the new one: the paths of what documents do not
        /// know.
        std::vector<std::wstring> lost;
        /// It was a version-3 file, and is a compressed one now.
        bool wasJson = false;
    };

    /// False when not all that is different was written.
    EditResult done;
    /// The PMP, when it was different from its file.
    std::optional<Document> parameters;
    /// The attempt to write it to its own file, when that failed and it went beside the
    /// configuration.
    std::optional<Document> ownParameters;
    /// The same for the configuration.
    std::optional<Document> configuration;
    /// The configuration names another PMP than before.
    bool namesOtherParameters = false;
    /// The names for people of papers whose entries in the PMP got the usual name, type, group and
    /// orientation, since its list is always written anew.
    std::vector<std::wstring> normalised;
};

/// A plot configuration with the PMP that it names, or a PMP alone, which is then carried by a
/// configuration of its device that is never written.
class PLATEN_API PaperFile {
public:
    /// What a file is opened for.
    enum class Purpose { Show, Edit };

    /// Reads a file. `report` says why it failed, and what was tolerated: a PMP that cannot be read
    /// is, unless the file is to be edited.
    EditResult open(const std::wstring& path, Purpose purpose, PiaReport& report);

    /// The configuration whose papers these are; after a successful `open` only.
    ///@{
    CPlotCfg3& config() { return *config_; }
    const CPlotCfg3& config() const { return *config_; }
    ///@}
    /// The configuration is the file's own.
    bool isConfiguration() const { return !isPmp_; }
    /// Largest width and height in millimetres (pixels for images); 0 for no limit.
    void largestPaper(double& width, double& height) const;

    /// Writes the documents that are different from what was read, each whole or not at all. The
    /// PMP goes into its own file or, when it has none or that cannot be written, beside the
    /// configuration, which then names it there. Files of others are left alone.
    SavedPapers save();

private:
    /// One of the two documents as it was read.
    struct Before {
        /// Empty for a PMP that is new.
        std::string body;
        int version = 0;
        FileMark mark;
        std::vector<std::wstring> lost;
    };

    EditResult openConfiguration(PiaInput& input, Purpose purpose);
    EditResult openParameters(PiaInput& input);
    void rememberParameters();
    EditResult saveParameters(SavedPapers& saved);
    static SavedPapers::Document written(const Before& before, const std::wstring& path,
                                         const PiaBlock& root);

    std::wstring path_;
    bool isPmp_ = false;
    bool deviceKnown_ = false;
    std::unique_ptr<CPlotCfg3> config_;
    Before configBefore_;
    Before pmpBefore_;
    std::vector<std::wstring> normalised_;
};

/// Sides and margins in `units`; without units in those of the paper or, for a new one, in those of
/// the device.
struct PaperShape {
    struct Margins {
        /// Each from its side of the paper.
        ///@{
        double left = 0;
        double bottom = 0;
        double right = 0;
        double top = 0;
        ///@}
    };

    /// Of the whole paper.
    ///@{
    double width = 0;
    double height = 0;
    ///@}
    /// A paper without them keeps those that it has.
    std::optional<Margins> margins;
    std::optional<OdDbPlotSettings::PlotPaperUnits> units;
};

/// Changes the papers of a file by their names: exactly or, when no paper has exactly the name,
/// without regard to case. The changes are in the documents at once, and in the file after
/// `PaperFile::save`.
class PLATEN_API PaperEditor {
public:
    /// Borrows the file, which must be open.
    explicit PaperEditor(PaperFile& file);

    /// Adds a paper, to be kept in the PMP. No other may have its name, in any case.
    EditResult add(const std::wstring& name, const PaperShape& shape);
    /// `NotFound` or `Ambiguous` when no one paper has the name.
    EditResult remove(const std::wstring& name);
    /// Gives a paper another name for people; what configurations call it stays.
    EditResult rename(const std::wstring& name, const std::wstring& newName);
    /// A configuration that is set to the paper follows.
    EditResult resize(const std::wstring& name, const PaperShape& shape);

    /// The paper of the last change, as it is now; a removed one as it was.
    const CustomPaperSize& paper() const { return paper_; }
    /// The configuration is, or still is, set to it.
    bool isCurrent() const;

private:
    EditResult find(const std::wstring& name);
    EditResult checkName(const std::wstring& name, std::size_t own) const;
    EditResult checkShape(const CustomPaperSize& paper) const;
    void store(std::size_t index);

    PaperFile& file_;
    std::vector<CustomPaperSize> list_;
    std::size_t found_ = 0;
    CustomPaperSize paper_;
};

}  // namespace platen

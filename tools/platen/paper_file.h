/// A file whose custom papers are shown or edited.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include "tools/platen/console/console.h"

namespace platen {

using cli::Console;
using cli::ExitCode;

/// A plot configuration with the PMP that it names, or a PMP alone, which is then carried by a
/// configuration of its device that is never written.
class PaperFile {
public:
    enum class Purpose { Show, Edit };

    /// Reads `file`. `Error` after a message, `Warnings` when something was tolerated. A PMP that
    /// cannot be read is tolerated unless the file is to be edited.
    ExitCode open(const std::string& file, Purpose purpose, const Console& console);

    CPlotCfg3& config() { return *config_; }
    /// The configuration is the file's own.
    bool isConfiguration() const { return !isPmp_; }

    /// Largest width and height in millimetres (pixels for images); 0 for no limit.
    void largestPaper(double& width, double& height) const;

    /// Writes the documents that are different from what was read, each whole or not at all, and
    /// says where they went.
    ExitCode save(const Console& console);

private:
    /// One of the two documents as it was read.
    struct Document {
        /// Empty for a PMP that is new.
        std::string body;
        int version = 0;
        /// What its file holds and the document does not.
        std::vector<std::wstring> lost;
    };

    ExitCode openConfiguration(PiaInput& input, Purpose purpose, const Console& console);
    ExitCode openParameters(PiaInput& input, const Console& console);
    void rememberParameters();
    ExitCode savePmp(bool& renamed, const Console& console);
    ExitCode warnOfRewriting(const Document& before, const std::string& path,
                             const Console& console) const;

    std::string file_;
    bool isPmp_ = false;
    bool deviceKnown_ = false;
    std::unique_ptr<CPlotCfg3> config_;
    Document configBefore_;
    Document pmpBefore_;
    /// Names of the papers whose entries in the PMP come out differently when the list is written.
    std::vector<std::wstring> normalised_;
};

}  // namespace platen

/// Where a changed file goes: another file, itself, or nowhere.
#pragma once

#include <string>

#include <platen/edit.h>
#include "tools/platen/console/console.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/selection.h"

namespace CLI {
class App;
}

namespace cli::files {

struct Destination {
    std::string out{};
    bool inPlace = false;
    /// Say what would change.
    bool dryRun = false;
    /// The old file is kept under its name and this, unless it is empty.
    std::string backupSuffix{};
};

/// Adds -o, --in-place[=SUFFIX] and --dry-run.
void addDestination(CLI::App* command, Destination& destination);

/// Does `work` for the files that `named` stands for. Refuses when it cannot be known where results
/// go, or when many had to go into one file.
ExitCode changeFiles(const std::string& named, const Selection& selection,
                     const Destination& destination, const Console& console, const FileWork& work);

/// Writes the items of a changed file to their destination, and the very bytes that were read
/// unless it `changed`. In a dry run says whether it would.
ExitCode storeChanged(const std::string& file, const Destination& destination,
                      platen::SourceFile& source, const PiaBlock& root, bool changed,
                      const Console& console);

}  // namespace cli::files

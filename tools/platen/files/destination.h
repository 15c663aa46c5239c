/// Where a changed file goes: another file, itself, or nowhere.
#pragma once

#include <functional>
#include <string>
#include <string_view>

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

/// Does `work` for the selected files. Refuses when it cannot be known where results go, or when
/// many had to go into one file.
ExitCode changeFiles(const Selection& selection, const Destination& destination,
                     const Console& console, const FileWork& work);
/// The same for options of one FILE, which may stand for many.
ExitCode changeFiles(const std::string& named, const Selection& selection,
                     const Destination& destination, const Console& console, const FileWork& work);

/// Keeps the old `bytes` of a file beside it when the destination says so, then does `write`. When
/// that fails, a copy that was not there before goes again.
ExitCode keepingCopy(const std::string& file, const Destination& destination,
                     std::string_view bytes, const Console& console,
                     const std::function<ExitCode()>& write);

/// Writes the items of a changed file to their destination, and the very bytes that were read
/// unless it `changed`. In a dry run says whether it would.
ExitCode storeChanged(const std::string& file, const Destination& destination,
                      platen::SourceFile& source, const PiaBlock& root, bool changed,
                      const Console& console);

}  // namespace cli::files

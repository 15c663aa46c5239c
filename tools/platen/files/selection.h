/// The files that a command line names.
#pragma once

#include <string>
#include <vector>

#include "tools/platen/console/console.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cli::files {

/// What was said, before any folder was looked at.
struct Selection {
    /// Files, folders, "@LIST" and "-".
    std::vector<std::string> named;
    /// Folders stand for the plotter files in them and in all folders in those.
    bool recursive = false;
    /// How many files are worked on at once; 0 for as many as there are processors.
    unsigned jobs = 0;
};

struct Selected {
    std::vector<std::string> files;
    /// `Error` after messages about what cannot be looked at.
    ExitCode code = ExitCode::Ok;
    /// Several could have been meant: a folder or a list was among what was named.
    bool isBatch = false;
};

/// Standard input or output in place of a file.
inline constexpr const char* standardStream = "-";

/// Finds the files, those of a folder in order. Plotter files there are told by their extension or
/// by how they begin; copies (".bak") and symbolic links are passed over.
Selected select(const Selection& selection, const Console& console);

/// The same for options of one FILE, which may stand for many.
Selected select(const std::string& named, const Selection& selection, const Console& console);

/// Adds FILE..., -r and --jobs.
CLI::Option* addFiles(CLI::App* command, Selection& selection);
/// Adds -r and --jobs alone.
void addBatch(CLI::App* command, Selection& selection);
/// Adds --jobs alone.
void addJobs(CLI::App* command, Selection& selection);

}  // namespace cli::files

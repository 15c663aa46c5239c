/// The same work on many files.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/platen/console/console.h"
#include "tools/platen/files/selection.h"

namespace cli::files {

struct Batch {
    /// What is done, for whoever waits: "checking".
    const char* doing;
    /// How many files at once; 0 for as many as there are processors.
    unsigned jobs = 0;
    /// All in the calling thread, for work that knows of no others.
    bool oneThread = false;
};

using FileWork = std::function<ExitCode(const std::string&, const Console&)>;

/// Does `work` for each file and gives what it says out in the order of the files; the worst code
/// counts. With several jobs it is called from several threads, each time with a console of its own
/// for it; a file that was named alone, which may be standard input, gets `console` itself. A file
/// for which the memory does not suffice is an error like others. After an interrupt files that
/// were begun are finished, and the rest are named.
ExitCode forEachFile(const Selected& selected, const Batch& batch, const Console& console,
                     const FileWork& work);
/// The same for what a command line names.
ExitCode forEachSelected(const Selection& selection, Batch batch, const Console& console,
                         const FileWork& work);

}  // namespace cli::files

/// Many results, each in a file of its own below a folder.
#pragma once

#include <functional>
#include <string>

#include "tools/platen/console/console.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/selection.h"

namespace cli::files {

struct IntoFolder {
    /// What was named: results stand below `out` as files stand below it when it is a folder.
    const std::string& in;
    const std::string& out;
    /// The name of a result, by the name of its file.
    std::function<std::string(const std::string&)> rename;
    /// Replace files that are there.
    bool force = false;
};

/// Does `work` for each file, which gets the file and where its result goes. Nothing is written
/// when two results would have one name.
ExitCode intoFolder(const IntoFolder& folder, const Selected& selected, const Batch& batch,
                    const Console& console,
                    const std::function<ExitCode(const std::string& file, const std::string& result,
                                                 const Console&)>& work);

}  // namespace cli::files

/// The plotter files of two folders, paired.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tools/platen/files/file_walk.h"

namespace cli::files {

struct FolderPairs {
    struct Names {
        std::string before;
        std::string after;
    };
    /// Below the folders, by the same names.
    std::vector<Names> both;
    /// Of two names, with contents that mean the same.
    std::vector<Names> renamed;
    std::vector<std::string> removed;
    std::vector<std::string> added;
    /// What cannot be looked at.
    std::vector<FileWalk::Fault> faults;
};

/// Names are whole paths, each list sorted.
FolderPairs pairFolders(const std::string& before, const std::string& after);

}  // namespace cli::files

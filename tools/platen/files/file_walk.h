/// The files of a folder and of all folders in it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace cli::files {

struct FileWalk {
    /// As `ut::encodePath` gives them, beginning with the folder; sorted folder by folder.
    std::vector<std::string> files;
    struct Fault {
        std::string path;
        std::string reason;
    };
    /// Symbolic links and what is neither file nor folder.
    std::vector<std::string> passedOver;
    /// Folders and entries that cannot be looked at.
    std::vector<Fault> faults;
};

/// What ends the names of copies.
inline constexpr std::string_view copySuffix = ".bak";

/// True for what is named like a plotter file or begins as one does, and is no copy.
bool isPlotterFile(const std::string& file);

/// Finds regular files. Symbolic links are not followed: what they lead to may stand elsewhere.
FileWalk walkFiles(const std::string& folder);

/// Names of files need not be text, so that they take the system's own form on both ways.
std::filesystem::path pathOf(const std::string& name);
std::string nameOf(const std::filesystem::path& path);

/// True when both are there and are one file, however they are spelled and linked.
bool isSameFile(const std::string& left, const std::string& right);

/// The first bytes of a file, at most `count`; fewer when it is shorter or cannot be read.
std::string beginningOf(const std::string& file, std::size_t count);

}  // namespace cli::files

#include "tools/platen/files/into_folder.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/files/file_walk.h"

namespace cli::files {
namespace {

/// Where the result of `file` stands, as `file` stands below `in`.
std::string placeBelow(const IntoFolder& folder, const std::string& file) {
    namespace fs = std::filesystem;
    const fs::path in = pathOf(file);
    const bool inFolder = ut::folderExists(ut::decodePath(folder.in));
    fs::path place = inFolder ? in.lexically_relative(pathOf(folder.in)) : in.filename();
    place.replace_filename(pathOf(folder.rename(nameOf(place.filename()))));
    return nameOf(pathOf(folder.out) / place);
}

}  // namespace

ExitCode intoFolder(const IntoFolder& folder, const Selected& selected, const Batch& batch,
                    const Console& console,
                    const std::function<ExitCode(const std::string& file, const std::string& result,
                                                 const Console&)>& work) {
    std::map<std::string, std::string> sources;
    bool clash = false;
    for (const std::string& file : selected.files) {
        const auto [other, isNew] = sources.emplace(placeBelow(folder, file), file);
        if (!isNew) {
            fail(console, file, "its result would stand where that of " + other->second + " goes");
            clash = true;
        }
    }
    if (clash) {
        return fail(console, folder.out, "nothing was written");
    }
    return forEachFile(selected, batch, console, [&](const std::string& file, const Console& own) {
        const std::string result = placeBelow(folder, file);
        std::error_code error;
        std::filesystem::create_directories(pathOf(result).parent_path(), error);
        if (error) {
            return fail(own, result, "its folder cannot be made: " + error.message());
        }
        if (ut::fileExists(ut::decodePath(result)) && !folder.force) {
            return fail(own, result, "is there already; add --force to replace it");
        }
        return work(file, result, own);
    });
}

}  // namespace cli::files

#include "tools/platen/files/file_walk.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <system_error>
#include <type_traits>
#include <utility>

#include <platen/utcore.h>

namespace cli::files {
namespace {

namespace fs = std::filesystem;
constexpr bool wideNames = std::is_same_v<fs::path::value_type, wchar_t>;

}  // namespace

fs::path pathOf(const std::string& name) {
    return wideNames ? fs::path(ut::decodePath(name)) : fs::path(name);
}

std::string nameOf(const fs::path& path) {
    return wideNames ? ut::encodePath(path.wstring()) : path.string();
}

bool isPlotterFile(const std::string& file) {
    constexpr std::array<std::wstring_view, 4> extensions{L"ctb", L"stb", L"pc3", L"pmp"};
    if (file.ends_with(copySuffix)) {
        return false;
    }
    const std::wstring path = ut::decodePath(file);
    constexpr std::string_view header = "PIAFILEVERSION_";
    return std::ranges::any_of(
               extensions,
               [&](std::wstring_view extension) { return ut::hasExtension(path, extension); }) ||
           beginningOf(file, header.size()) == header;
}

FileWalk walkFiles(const std::string& folder) {
    FileWalk walk;
    std::vector<fs::path> folders{pathOf(folder)};
    while (!folders.empty()) {
        const fs::path current = std::move(folders.back());
        folders.pop_back();
        std::vector<fs::path> inner;
        std::vector<std::string> files;
        std::error_code error;
        for (fs::directory_iterator entry(current, error), end; !error && entry != end;
             entry.increment(error)) {
            std::error_code unknown;
            const fs::file_status status = entry->symlink_status(unknown);
            if (unknown) {
                walk.faults.push_back({nameOf(entry->path()), unknown.message()});
            } else if (fs::is_directory(status)) {
                inner.push_back(entry->path());
            } else if (fs::is_regular_file(status)) {
                files.push_back(nameOf(entry->path()));
            } else {
                walk.passedOver.push_back(nameOf(entry->path()));
            }
        }
        if (error) {
            walk.faults.push_back({nameOf(current), error.message()});
        }
        std::sort(files.begin(), files.end());
        std::move(files.begin(), files.end(), std::back_inserter(walk.files));
        // The last one is looked at next.
        std::sort(inner.rbegin(), inner.rend());
        std::move(inner.begin(), inner.end(), std::back_inserter(folders));
    }
    std::sort(walk.passedOver.begin(), walk.passedOver.end());
    return walk;
}

bool isSameFile(const std::string& left, const std::string& right) {
    std::error_code missing;
    return fs::equivalent(pathOf(left), pathOf(right), missing) && !missing;
}

std::string beginningOf(const std::string& file, std::size_t count) {
    std::string bytes(count, '\0');
    std::ifstream stream(pathOf(file), std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

}  // namespace cli::files

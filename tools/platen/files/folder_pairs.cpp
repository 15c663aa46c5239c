#include "tools/platen/files/folder_pairs.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <string_view>

#include <platen/compare.h>
#include <platen/edit.h>
#include <platen/utcore.h>

namespace cli::files {
namespace {

/// The files of a folder by their names in it.
using Named = std::map<std::string, std::string>;

Named namedFiles(const std::string& folder, std::vector<FileWalk::Fault>& faults) {
    FileWalk walk = walkFiles(folder);
    std::move(walk.faults.begin(), walk.faults.end(), std::back_inserter(faults));
    Named named;
    for (std::string& file : walk.files) {
        if (isPlotterFile(file)) {
            const std::size_t begin = file.find_first_not_of("/\\", folder.size());
            std::string name = file.substr(std::min(begin, file.size()));
            named.emplace(std::move(name), std::move(file));
        }
    }
    return named;
}

/// Files of one content have one digest; nothing for a file that cannot be read.
std::size_t digestOf(const std::string& file) {
    platen::SourceFile source;
    const bool read = source.read(ut::decodePath(file));
    return read ? std::hash<std::string_view>()(source.input().body()) : 0;
}

bool meanTheSame(const std::string& before, const std::string& after) {
    platen::SourceFile one;
    platen::SourceFile other;
    return one.read(ut::decodePath(before)) && other.read(ut::decodePath(after)) &&
           platen::compare(one.input(), other.input()).equal();
}

/// Takes files that were given other names out of both lists.
void findRenamed(FolderPairs& pairs) {
    if (pairs.removed.empty() || pairs.added.empty()) {
        return;
    }
    std::multimap<std::size_t, std::string> contents;
    for (const std::string& file : pairs.added) {
        if (const std::size_t digest = digestOf(file); digest != 0) {
            contents.emplace(digest, file);
        }
    }
    std::set<std::string> found;
    for (const std::string& file : pairs.removed) {
        const auto [begin, end] = contents.equal_range(digestOf(file));
        const auto match = std::find_if(
            begin, end, [&](const auto& content) { return meanTheSame(file, content.second); });
        if (match != end) {
            pairs.renamed.push_back({file, match->second});
            found.insert({file, match->second});
            contents.erase(match);
        }
    }
    const auto wasFound = [&](const std::string& file) { return found.contains(file); };
    std::erase_if(pairs.removed, wasFound);
    std::erase_if(pairs.added, wasFound);
}

}  // namespace

FolderPairs pairFolders(const std::string& before, const std::string& after) {
    FolderPairs pairs;
    const Named removed = namedFiles(before, pairs.faults);
    Named added = namedFiles(after, pairs.faults);
    for (const auto& [name, file] : removed) {
        if (const auto other = added.find(name); other != added.end()) {
            pairs.both.push_back({file, other->second});
            added.erase(other);
        } else {
            pairs.removed.push_back(file);
        }
    }
    for (const auto& [name, file] : added) {
        pairs.added.push_back(file);
    }
    findRenamed(pairs);
    return pairs;
}

}  // namespace cli::files

#include "tools/platen/files/selection.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/files/file_walk.h"

namespace cli::files {
namespace {

/// One name a line; lines end as on any system.
void addLines(std::istream& list, std::vector<std::string>& files) {
    for (std::string line; std::getline(list, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (!line.empty()) {
            files.push_back(std::move(line));
        }
    }
}

class Finder {
public:
    Finder(bool recursive, const Console& console) : recursive_(recursive), console_(console) {}

    void add(const std::string& named) {
        if (named.size() > 1 && named.front() == '@') {
            addList(named.substr(1));
        } else if (named != standardStream && ut::folderExists(ut::decodePath(named))) {
            addFolder(named);
        } else {
            found_.files.push_back(named);
        }
    }

    Selected take() { return std::move(found_); }

private:
    void addList(const std::string& name) {
        found_.isBatch = true;
        if (name == standardStream) {
            addLines(console_.in, found_.files);
            return;
        }
        std::ifstream list(pathOf(name), std::ios::binary);
        if (!list) {
            found_.code =
                fail(console_, name,
                     "the list of files cannot be read; a file whose name begins with \"@\" is "
                     "named with its folder, as in ./@" +
                         name);
            return;
        }
        addLines(list, found_.files);
    }

    void addFolder(const std::string& folder) {
        found_.isBatch = true;
        if (!recursive_) {
            found_.code =
                fail(console_, folder, "this is a folder; add -r for all plotter files in it");
            return;
        }
        FileWalk walk = walkFiles(folder);
        for (const FileWalk::Fault& fault : walk.faults) {
            found_.code = fail(console_, fault.path, fault.reason);
        }
        std::erase_if(walk.files, [](const std::string& file) { return !isPlotterFile(file); });
        if (walk.files.empty() && walk.faults.empty()) {
            fail(console_, folder, "there is no plotter file in it");
            found_.code = worse(found_.code, ExitCode::Difference);
        }
        std::ranges::move(walk.files, std::back_inserter(found_.files));
    }

    bool recursive_;
    const Console& console_;
    Selected found_;
};

}  // namespace

Selected select(const Selection& selection, const Console& console) {
    Finder finder(selection.recursive, console);
    for (const std::string& named : selection.named) {
        finder.add(named);
    }
    return finder.take();
}

Selected select(const std::string& named, const Selection& selection, const Console& console) {
    Finder finder(selection.recursive, console);
    finder.add(named);
    return finder.take();
}

CLI::Option* addFiles(CLI::App* command, Selection& selection) {
    CLI::Option* option = arguments::takeText(
        command->add_option("FILE", selection.named,
                            "Files; @LIST: the names in a file, one a line; -: standard input"));
    addBatch(command, selection);
    return option->required();
}

void addBatch(CLI::App* command, Selection& selection) {
    command->add_flag("-r,--recursive", selection.recursive,
                      "Folders stand for all plotter files in them");
    addJobs(command, selection);
}

void addJobs(CLI::App* command, Selection& selection) {
    command
        ->add_option("-j,--jobs", selection.jobs,
                     "Files worked on at once (as many as there are processors)")
        ->type_name("N")
        ->check(CLI::Range(1U, 1024U));
}

}  // namespace cli::files

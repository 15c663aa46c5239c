#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <platen/compare.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/folder_pairs.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(A and B are two files, or two folders. Styles, papers and custom properties are
matched by their names, the styles of a colour-dependent table by their colours; numbers are equal
by their values; a key that is left out equals its usual value. A colour-dependent table and a named
one with a colour index are compared by what each colour gets. What differs in the container alone
(version, header, encoding) is said, but no difference.

Of folders, files that only A has are "removed", those that only B has "added", and those of one
content and two names "renamed". Only plotter files are looked at, and links are not followed.

--json prints what platen apply takes. Exit codes: 0 equal, 1 different, 2 an error.

Examples:
  platen diff office.ctb site.ctb
      Color 1-9, 250-255: lineweight 0.25 mm -> 0.35 mm, screening 100 % -> 50 %
  platen diff old.pc3 new.pc3 --only media,custom
  platen diff a.ctb b.ctb --only lineweight --json > thicker.json
  platen apply thicker.json other.ctb --in-place=.bak
  platen diff -r plotters-2023 plotters-2024)";

struct DiffOptions {
    std::string before;
    std::string after;
    /// Keys, with commas between them; empty for all.
    std::string only;
    bool json = false;
    /// Of folders.
    files::Selection selection;
    std::uint64_t maxBody = files::usualMaxBody;
};

bool isFolder(const std::string& name) { return ut::folderExists(ut::decodePath(name)); }

class Diff {
public:
    Diff(const DiffOptions& options, const Console& console)
        : options_(options), console_(console) {
        std::string rest = options.only + ',';
        for (std::size_t comma = rest.find(','); comma != std::string::npos;
             comma = rest.find(',')) {
            if (comma > 0) {
                only_.push_back(ut::decodePath(rest.substr(0, comma)));
            }
            rest.erase(0, comma + 1);
        }
    }

    ExitCode run() {
        const bool folders = isFolder(options_.before);
        if (folders != isFolder(options_.after)) {
            return fail(console_, folders ? options_.after : options_.before,
                        "this is no folder, and the other is; name two files or two folders");
        }
        if (folders && !options_.selection.recursive) {
            return fail(console_, options_.before,
                        "this is a folder; add -r for all plotter files in it");
        }
        return folders ? compareFolders()
                       : compareFiles(options_.before, options_.after, false, console_);
    }

private:
    ExitCode compareFolders() {
        const files::FolderPairs pairs = files::pairFolders(options_.before, options_.after);
        ExitCode worst = ExitCode::Ok;
        for (const files::FileWalk::Fault& fault : pairs.faults) {
            worst = worse(worst, fail(console_, fault.path, fault.reason));
        }
        for (const std::string& file : pairs.removed) {
            worst = worse(worst, tellFile(file, ""));
        }
        for (const std::string& file : pairs.added) {
            worst = worse(worst, tellFile("", file));
        }
        for (const files::FolderPairs::Names& names : pairs.renamed) {
            worst = worse(worst, tellFile(names.before, names.after));
        }
        files::Selected selected;
        selected.code = worst;
        selected.isBatch = true;
        std::map<std::string, std::string> others;
        for (const files::FolderPairs::Names& names : pairs.both) {
            selected.files.push_back(names.before);
            others.emplace(names.before, names.after);
        }
        return files::forEachFile(selected, {.doing = "comparing", .jobs = options_.selection.jobs},
                                  console_, [&](const std::string& file, const Console& own) {
                                      return compareFiles(file, others.at(file), true, own);
                                  });
    }

    ExitCode tellFile(const std::string& before, const std::string& after) {
        if (options_.json) {
            console_.out << platen::fileChangeJson(before, after) << '\n';
        } else {
            console_.out << (before.empty()  ? "added: "
                             : after.empty() ? "removed: "
                                             : "renamed: ")
                         << printable(before.empty() ? after : before)
                         << (before.empty() || after.empty() ? "" : " -> " + printable(after))
                         << '\n';
        }
        return ExitCode::Difference;
    }

    ExitCode compareFiles(const std::string& before, const std::string& after, bool inFolders,
                          const Console& console) const {
        platen::SourceFile one;
        platen::SourceFile other;
        const PiaReadOptions reading = platen::readingUpTo(options_.maxBody);
        const bool read = files::readSource(before, one, console, reading);
        if (!files::readSource(after, other, console, reading) || !read) {
            return ExitCode::Error;
        }
        if (!inFolders && !knowsKeys(one, other)) {
            return ExitCode::Error;
        }
        platen::Comparison comparison = platen::compare(one.input(), other.input());
        platen::keepOnly(comparison, only_);
        if (options_.json) {
            if (!inFolders || !comparison.equal()) {
                console.out << platen::diffJson({before, platen::recognise(one.input()).kind},
                                                {after, platen::recognise(other.input()).kind},
                                                comparison)
                            << '\n';
            }
        } else {
            tell(before, comparison, inFolders, console);
        }
        return comparison.equal() ? ExitCode::Ok : ExitCode::Difference;
    }

    static void tell(const std::string& file, const platen::Comparison& comparison, bool inFolders,
                     const Console& console) {
        const std::vector<std::string> lines = platen::describe(comparison);
        if (inFolders && !lines.empty()) {
            console.out << (comparison.equal() ? "same content: " : "changed: ") << printable(file)
                        << '\n';
        }
        for (const std::string& line : lines) {
            console.out << (inFolders ? "  " : "") << line << '\n';
        }
    }

    /// A mistyped key would find that the files are equal.
    bool knowsKeys(const platen::SourceFile& one, const platen::SourceFile& other) const {
        std::vector<std::wstring> names;
        for (const platen::SourceFile* file : {&one, &other}) {
            for (PiaWalk walk(*file->input().root()); !only_.empty() && walk.next();) {
                names.push_back(walk.item().name);
            }
        }
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        for (const std::wstring& key : only_) {
            if (std::none_of(names.begin(), names.end(), [&](const std::wstring& name) {
                    return ut::equalNoCase(name, key);
                })) {
                fail(console_, "--only",
                     "neither file has a key \"" + ut::encodePath(key) + "\"" +
                         arguments::suggestion(key, names, "platen get shows them"));
                return false;
            }
        }
        return true;
    }

    const DiffOptions& options_;
    const Console& console_;
    std::vector<std::wstring> only_;
};

/// Compares by meaning.
ExitCode run(const DiffOptions& options, const Console& console) {
    return Diff(options, console).run();
}

}  // namespace

CommandEntry addDiff(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "diff", "Say how two files or folders differ in what they mean", help);
    const auto options = std::make_shared<DiffOptions>();
    arguments::takeText(command->add_option("A", options->before, "File or folder as it was"))
        ->required();
    arguments::takeText(command->add_option("B", options->after, "File or folder as it is"))
        ->required();
    arguments::takeText(command->add_option(
        "--only", options->only, "Keys that count, with commas between them; all when left out"));
    command->add_flag("--json", options->json, "Print JSON, one object a line");
    files::addBatch(command, options->selection);
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

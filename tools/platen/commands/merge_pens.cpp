#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/destination.h"
#include "tools/platen/files/table_file.h"
#include "tools/platen/words/words.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Styles are equal when all their settings and their descriptions are. Of a named table the
first of them stays, colours that have another get it, and what became of which is printed: objects
of drawings that are set to a style that is gone need the one that stays. "Normal" is left alone. A
colour table keeps its 255 styles; it is said which are equal, and platen convert makes one named
style of each group.

Examples:
  platen merge-pens pens.ctb                  only says which are equal
  platen merge-pens named.stb --in-place=.bak
  platen convert pens.ctb -o pens.stb)";

struct MergeOptions {
    std::string file;
    files::Selection selection;
    files::Destination destination;
};

void print(const platen::TableEditor& editor, const platen::EqualStyles& groups,
           const Console& console) {
    for (const std::vector<std::size_t>& group : groups) {
        std::vector<int> numbers;
        std::string others;
        for (const std::size_t place : group) {
            numbers.push_back(static_cast<int>(place) + 1);
            if (place != group.front()) {
                others += (others.empty() ? "" : ", ") +
                          words::quoted(editor.table().style(place)->locName());
            }
        }
        if (editor.isByColour()) {
            console.out << "equal: colours " << platen::rangesInWords(numbers) << '\n';
        } else {
            console.out << words::quoted(editor.table().style(group.front())->locName())
                        << " stands for " << others << '\n';
        }
    }
}

ExitCode mergeIn(const std::string& file, const MergeOptions& options, const Console& console) {
    files::TableFile table;
    const ExitCode opened = table.open(file, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    const platen::EqualStyles groups = platen::equalStyles(table.editor.table());
    const bool writes = !options.destination.dryRun;
    if (table.editor.isByColour() && writes) {
        return fail(console, file,
                    "nothing was written: a colour table keeps a style for each colour; platen "
                    "convert makes a named table of it, with one style of each group");
    }
    // The words would stand behind the file.
    if (!writes || options.destination.out != files::standardStream) {
        print(table.editor, groups, console);
    }
    if (table.editor.isByColour()) {
        return opened;
    }
    if (const platen::EditResult done = table.editor.merge(groups); !done) {
        return fail(console, file, "nothing was written: " + files::reasonOf(done));
    }
    return worse(opened, table.store(file, options.destination, console));
}

ExitCode run(const MergeOptions& given, const Console& console) {
    MergeOptions options = given;
    files::Destination& destination = options.destination;
    destination.dryRun = destination.dryRun || (destination.out.empty() && !destination.inPlace);
    return files::changeFiles(
        options.file, options.selection, destination, console,
        [&](const std::string& file, const Console& own) { return mergeIn(file, options, own); });
}

}  // namespace

CommandEntry addMergePens(CLI::App& program) {
    CLI::App* command = arguments::addCommand(program, "merge-pens",
                                              "Make one style of those that are equal", help);
    const auto options = std::make_shared<MergeOptions>();
    arguments::takeText(command->add_option("TABLE", options->file,
                                            "Plot style table, @LIST or -; with -r a folder"))
        ->required();
    files::addDestination(command, options->destination);
    files::addBatch(command, options->selection);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/destination.h"
#include "tools/platen/files/table_file.h"
#include "tools/platen/words/columns.h"
#include "tools/platen/words/words.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(A table has 27 line weights, numbered 0 to 26; its styles choose among them, and all
that chose one follow when it changes. They lie between 0 and 200 mm.

Examples:
  platen lineweights pens.ctb                          what there is, and which styles use it
  platen lineweights pens.ctb set 8=0.26 9=0.012in --in-place=.bak
  platen lineweights -r tables set 8=0.26 --in-place)";

struct LineweightsOptions {
    std::string file;
    files::Selection selection;
    /// "set" and "INDEX=WEIGHT" behind it.
    std::vector<std::string> changes;
    files::Destination destination;
};

constexpr const char* setWord = "set";

std::string usersOf(const CPlotStyleTable& table, std::size_t index) {
    std::vector<int> users;
    for (std::size_t place = 0; place < table.size(); ++place) {
        if (table.style(place)->lineWeight() == static_cast<std::int32_t>(index)) {
            users.push_back(static_cast<int>(place) + 1);
        }
    }
    return platen::rangesInWords(users);
}

ExitCode listIn(const std::string& file, bool isBatch, const Console& console) {
    constexpr double millimetresPerInch = 25.4;
    files::TableFile table;
    const ExitCode opened = table.open(file, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    if (isBatch) {
        console.out << printable(file) << '\n';
    }
    std::vector<std::vector<std::string>> rows{{"number", "millimetres", "inches", "styles"}};
    const CPlotStyleTable& styles = table.editor.table();
    for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
        const double weight = styles.customLineweights()[index];
        rows.push_back({std::to_string(index), words::number(weight),
                        words::roundedNumber(weight / millimetresPerInch), usersOf(styles, index)});
    }
    words::printColumns(rows, console);
    return opened;
}

/// Says why "INDEX=WEIGHT" cannot be set; empty when it was.
std::string setOne(platen::TableEditor& editor, const std::string& change) {
    const std::size_t end = change.find('=');
    const std::optional<double> index = platen::wholeNumber(change.substr(0, end));
    std::wstring weight;
    if (end == std::string::npos || !index || *index < 0 ||
        *index >= static_cast<double>(CCustomLineweightTable::count) ||
        !ut::decodeUtf8(change.substr(end + 1), weight)) {
        return '"' + change + "\" is no NUMBER=WEIGHT with a number from 0 to 26";
    }
    return files::reasonOf(editor.setLineWeight(static_cast<std::size_t>(*index), weight));
}

ExitCode setIn(const std::string& file, const LineweightsOptions& options, const Console& console) {
    files::TableFile table;
    const ExitCode opened = table.open(file, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    for (std::size_t index = 1; index < options.changes.size(); ++index) {
        if (const std::string fault = setOne(table.editor, options.changes[index]);
            !fault.empty()) {
            return fail(console, file, "nothing was written: " + fault);
        }
    }
    return worse(opened, table.store(file, options.destination, console));
}

ExitCode run(const LineweightsOptions& options, const Console& console) {
    if (options.changes.empty()) {
        const files::Selected selected = files::select(options.file, options.selection, console);
        return files::forEachFile(selected, {.doing = "reading", .jobs = options.selection.jobs},
                                  console, [&](const std::string& file, const Console& own) {
                                      return listIn(file, selected.isBatch, own);
                                  });
    }
    if (options.changes.front() != setWord || options.changes.size() == 1) {
        return fail(console, "",
                    "\"" + options.changes.front() +
                        "\" is not understood; write set NUMBER=WEIGHT, such as set 8=0.26");
    }
    return files::changeFiles(
        options.file, options.selection, options.destination, console,
        [&](const std::string& file, const Console& own) { return setIn(file, options, own); });
}

}  // namespace

CommandEntry addLineweights(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "lineweights", "List and change the line weights of plot style tables", help);
    const auto options = std::make_shared<LineweightsOptions>();
    arguments::takeText(command->add_option("TABLE", options->file,
                                            "Plot style table, @LIST or -; with -r a folder"))
        ->required();
    arguments::takeText(
        command->add_option("CHANGES", options->changes,
                            "set NUMBER=WEIGHT ...: millimetres, or inches such as 0.014in"));
    files::addDestination(command, options->destination);
    files::addBatch(command, options->selection);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

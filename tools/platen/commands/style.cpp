#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/destination.h"
#include "tools/platen/files/table_file.h"
#include "tools/platen/words/columns.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(STYLES are numbers (the colours of a colour table) such as 7 or 1-9,250; a name, in
which * stands for any characters and ? for one; or all that are equal to one: =7, "=Wall 2".

Settings:
  color         #rrggbb, index:7, object
  lineweight    0.35, 0.35mm, 0.014in, object    one of the table's, see platen lineweights
  screening     0 to 100
  dither, grayscale, adaptive                    on, off (adaptive: linetypes)
  linetype, fill, ends, joins                    the numbers that files have, standard
  pen, virtual_pen, pattern_size                 numbers
  description                                    any text

Examples:
  platen style list pens.ctb =7
  platen style set pens.ctb 1-9,250 lineweight=0.35 screening=50 --in-place=.bak
  platen style set named.stb "Wall*" color=#ff8000 -o changed.stb
  platen style set -r tables 7 lineweight=0.5 --in-place --dry-run
  platen style copy pens.ctb 7 1-6 --in-place    pens 1 to 6 become like pen 7
  platen style add named.stb "Wall thin" lineweight=0.18 --like Wall --in-place
  platen style rename named.stb Wall "Wall thick" --in-place
  platen style remove named.stb "Old*" --in-place)";

struct StyleOptions {
    std::string file;
    files::Selection selection;
    std::string styles;
    /// Of a new style, or a new name.
    std::string name;
    /// The style that a new one is a copy of; empty for a fresh one.
    std::string like;
    std::string to;
    /// "SETTING=VALUE"
    std::vector<std::string> assignments;
    files::Destination destination;
    bool json = false;
    ExitCode (*action)(const StyleOptions&, const Console&) = nullptr;
};

using Places = std::vector<std::size_t>;

/// The options' texts as the library takes them.
struct Texts {
    std::wstring styles;
    std::wstring name;
    std::wstring like;
    std::wstring to;
    std::vector<std::wstring> assignments;
};

bool decode(const StyleOptions& options, Texts& texts) {
    texts.assignments.resize(options.assignments.size());
    bool done = ut::decodeUtf8(options.styles, texts.styles) &&
                ut::decodeUtf8(options.name, texts.name) &&
                ut::decodeUtf8(options.like, texts.like) && ut::decodeUtf8(options.to, texts.to);
    for (std::size_t index = 0; index < texts.assignments.size(); ++index) {
        done = done && ut::decodeUtf8(options.assignments[index], texts.assignments[index]);
    }
    return done;
}

/// What differs from a fresh style, in the words that set it.
std::string settingsOf(const CPlotStyle& style, const CCustomLineweightTable& weights) {
    const CPlotStyle fresh;
    std::string words;
    for (const platen::StyleSetting& setting : platen::styleSettings()) {
        const std::string text = platen::settingText(style, setting, weights);
        if (text != platen::settingText(fresh, setting, weights)) {
            words += words.empty() ? "" : ", ";
            words += std::string(setting.word) + ' ' +
                     (setting.word == "color" ? platen::colorText(style) : text);
        }
    }
    return words.empty() ? "standard" : words;
}

ExitCode listIn(const std::string& file, const StyleOptions& options, bool isBatch,
                const Console& console) {
    files::TableFile table;
    const ExitCode opened = table.open(file, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    Texts texts;
    Places places;
    if (!decode(options, texts)) {
        return fail(console, file, "names of styles must be UTF-8");
    }
    if (const platen::EditResult found = table.editor.select(texts.styles, places); !found) {
        fail(console, file, files::reasonOf(found));
        return worse(ExitCode::Difference, opened);
    }
    const CPlotStyleTable& styles = table.editor.table();
    if (options.json) {
        console.out << platen::stylesJson(file, styles, places) << '\n';
        return opened;
    }
    if (isBatch) {
        console.out << printable(file) << '\n';
    }
    std::vector<std::vector<std::string>> rows{{"number", "name", "settings"}};
    for (const std::size_t place : places) {
        const CPlotStyle& style = *styles.style(place);
        rows.push_back({std::to_string(place + 1), ut::encodeUtf8(style.locName()),
                        settingsOf(style, styles.customLineweights())});
    }
    words::printColumns(rows, console);
    return opened;
}

ExitCode listStyles(const StyleOptions& options, const Console& console) {
    const files::Selected selected = files::select(options.file, options.selection, console);
    return files::forEachFile(selected, {.doing = "reading", .jobs = options.selection.jobs},
                              console, [&](const std::string& file, const Console& own) {
                                  return listIn(file, options, selected.isBatch, own);
                              });
}

platen::EditResult setAll(platen::TableEditor& editor, const Places& places, const Texts& texts) {
    for (const std::wstring& assignment : texts.assignments) {
        if (platen::EditResult done = editor.set(places, assignment); !done) {
            return done;
        }
    }
    return {};
}

platen::EditResult set(platen::TableEditor& editor, const Texts& texts) {
    Places places;
    platen::EditResult found = editor.select(texts.styles, places);
    return found ? setAll(editor, places, texts) : found;
}

platen::EditResult add(platen::TableEditor& editor, const Texts& texts) {
    std::size_t like = 0;
    if (!texts.like.empty()) {
        if (platen::EditResult found = editor.selectOne(texts.like, like); !found) {
            return found;
        }
    }
    platen::EditResult added = editor.add(texts.name, texts.like.empty() ? nullptr : &like);
    return added ? setAll(editor, {editor.table().size() - 1}, texts) : added;
}

platen::EditResult rename(platen::TableEditor& editor, const Texts& texts) {
    std::size_t place = 0;
    platen::EditResult found = editor.selectOne(texts.styles, place);
    return found ? editor.rename(place, texts.name) : found;
}

platen::EditResult remove(platen::TableEditor& editor, const Texts& texts) {
    Places places;
    platen::EditResult found = editor.select(texts.styles, places);
    return found ? editor.remove(places) : found;
}

platen::EditResult copy(platen::TableEditor& editor, const Texts& texts) {
    std::size_t from = 0;
    Places places;
    if (platen::EditResult found = editor.selectOne(texts.styles, from); !found) {
        return found;
    }
    if (platen::EditResult found = editor.select(texts.to, places); !found) {
        return found;
    }
    for (const std::size_t place : places) {
        editor.copy(from, place);
    }
    return {};
}

using Change = platen::EditResult (*)(platen::TableEditor&, const Texts&);

template <Change change>
ExitCode changing(const StyleOptions& options, const Console& console) {
    Texts texts;
    if (!decode(options, texts)) {
        return fail(console, options.file, "names and values must be UTF-8; nothing was written");
    }
    return files::changeFiles(
        options.file, options.selection, options.destination, console,
        [&](const std::string& file, const Console& own) {
            files::TableFile table;
            const ExitCode opened = table.open(file, own);
            if (opened == ExitCode::Error) {
                return opened;
            }
            if (const platen::EditResult done = change(table.editor, texts); !done) {
                return fail(own, file, "nothing was written: " + files::reasonOf(done));
            }
            return worse(opened, table.store(file, options.destination, own));
        });
}

ExitCode run(const StyleOptions& options, const Console& console) {
    return options.action(options, console);
}

using SharedOptions = std::shared_ptr<StyleOptions>;

CLI::App* addAction(CLI::App* command, const SharedOptions& options, const char* word,
                    const char* purpose, ExitCode (*action)(const StyleOptions&, const Console&)) {
    CLI::App* added = command->add_subcommand(word, purpose);
    added->group("Actions")->footer(help);
    arguments::takeText(
        added->add_option("TABLE", options->file, "Plot style table, @LIST or -; with -r a folder"))
        ->required();
    added->final_callback([options, action] { options->action = action; });
    return added;
}

CLI::Option* addText(CLI::App* action, std::string& text, const char* name, const char* purpose) {
    return arguments::takeText(action->add_option(name, text, purpose))->required();
}

void addChange(CLI::App* action, const SharedOptions& options) {
    files::addDestination(action, options->destination);
    files::addBatch(action, options->selection);
}

CLI::Option* addAssignments(CLI::App* action, const SharedOptions& options) {
    return arguments::takeText(
        action->add_option("SETTING=VALUE", options->assignments, "What to set, in this order"));
}

}  // namespace

CommandEntry addStyle(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "style", "List and change the styles of plot style tables", help);
    const auto options = std::make_shared<StyleOptions>();
    command->require_subcommand(1);
    const char* which = "Numbers, name or =ONE";

    CLI::App* listing = addAction(command, options, "list", "List styles", listStyles);
    options->styles = "*";
    arguments::takeText(listing->add_option("STYLES", options->styles, which));
    listing->add_flag("--json", options->json, "One JSON object a line, schema platen.styles/1");
    files::addBatch(listing, options->selection);

    CLI::App* setting = addAction(command, options, "set", "Change settings", changing<set>);
    addText(setting, options->styles, "STYLES", which);
    addAssignments(setting, options)->required();
    addChange(setting, options);

    CLI::App* adding =
        addAction(command, options, "add", "Add a style to a named table", changing<add>);
    addText(adding, options->name, "NAME", "Name of the new style");
    addAssignments(adding, options);
    arguments::takeText(
        adding->add_option("--like", options->like, "Style that the new one is a copy of"))
        ->type_name("STYLE");
    addChange(adding, options);

    CLI::App* renaming = addAction(command, options, "rename", "Rename a style", changing<rename>);
    addText(renaming, options->styles, "STYLE", "Number or name");
    addText(renaming, options->name, "NAME", "New name");
    addChange(renaming, options);

    CLI::App* removing =
        addAction(command, options, "remove", "Remove styles of a named table", changing<remove>);
    addText(removing, options->styles, "STYLES", which);
    addChange(removing, options);

    CLI::App* copying =
        addAction(command, options, "copy", "Give styles the settings of another", changing<copy>);
    addText(copying, options->styles, "STYLE", "Number or name of the one");
    addText(copying, options->to, "STYLES", "Those that become like it");
    addChange(copying, options);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/into_folder.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"
#include "tools/platen/files/table_file.h"
#include "tools/platen/words/table_text.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(IN is a compressed file, a JSON body or bare body text. OUT is replaced in one
step when it exists, and stays as it was when anything fails; it may be IN. Unknown keys, their
order and the spelling of numbers survive, unless colours are gathered into named styles; JSON
has an order and a spelling of its own.

Examples:
  platen convert pens.ctb -o pens.stb             prints which colours went to which style
  platen convert pens.ctb -o pens.stb --prefix Pen     Pen_1, Pen_2 ... instead of Style_1 ...
  platen convert pens.ctb -o pens.json            compressed to JSON, and back:
  platen convert pens.json -o pens.ctb
  platen convert pens.ctb -o pens.txt             the body text, for an editor, and back:
  platen convert pens.txt -o pens.ctb
  platen convert pens.ctb -o pens.csv             a table for a spreadsheet, and back into it:
  platen convert pens.csv -o pens.ctb             rows and columns that are missing stay
  platen convert pens.csv -o new.ctb --base pens.ctb
  platen convert -r tables -o json --to json      every file of a folder into another folder
  platen convert pens.ctb -o - --to text | less   to standard output; IN may be -, too
  platen convert plotter.bak -o plotter --to pc3  when the name of OUT does not say it)";

struct ConvertOptions {
    std::string in;
    files::Selection selection;
    std::string out;
    /// A word such as "stb"; empty: the extension of `out` decides.
    std::string to;
    /// Begins the names of the styles that a colour table is turned into; empty: "Style".
    std::string prefix;
    /// The table that a CSV file changes; empty: OUT when it is there, or a fresh one.
    std::string base;
    std::uint64_t maxBody = files::usualMaxBody;
    /// Replace files in the folder that many results go into.
    bool force = false;
};

struct Target {
    std::string_view word;
    std::wstring_view extension;
    /// The header of the result; none for results that are no compressed file.
    std::optional<PiaKind> header;
};

constexpr std::string_view csvWord = "csv";

constexpr std::array<Target, 7> targets{{
    {"ctb", L"ctb", PiaKind::Ctb},
    {"stb", L"stb", PiaKind::Stb},
    {"pc3", L"pc3", PiaKind::Pc3},
    {"pmp", L"pmp", PiaKind::Pc3},
    {"json", L"json", std::nullopt},
    {"text", L"txt", std::nullopt},
    {csvWord, L"csv", std::nullopt},
}};

const Target* targetOf(const ConvertOptions& options) {
    const std::wstring out = ut::decodePath(options.out);
    const auto* target = std::find_if(targets.begin(), targets.end(), [&](const Target& entry) {
        return options.to.empty() ? ut::hasExtension(out, entry.extension)
                                  : entry.word == options.to;
    });
    return target == targets.end() ? nullptr : target;
}

/// Why this content cannot become such a file; empty when it can.
std::string refusal(const platen::Content& content, const Target& target) {
    if (target.word == csvWord) {
        return content.table ? "" : "only a sound plot style table becomes a CSV file";
    }
    if (!target.header || content.kind == platen::FileKind::Pia ||
        target.word == platen::kindWord(content.kind)) {
        return {};
    }
    if (content.kind == platen::FileKind::Ctb && target.header == PiaKind::Stb) {
        return content.rejected ? "the table is damaged, so that its colours cannot be sorted out; "
                                  "platen check says where"
                                : "";
    }
    if (content.kind == platen::FileKind::Stb && target.header == PiaKind::Ctb) {
        return content.table && platen::colourTableOf(*content.table).table
                   ? ""
                   : "the named table does not say which style each of the 255 colours has, so "
                     "that no colour-dependent table can be made of it";
    }
    return std::string("the file holds a document of another family: ") +
           platen::kindName(content.kind);
}

/// True when colours have to be gathered into named styles. A table under a CTB header whose
/// styles are shared by colours has its names already.
bool needsNames(const platen::Content& content, const Target& target) {
    return content.kind == platen::FileKind::Ctb && target.header == PiaKind::Stb &&
           content.table != nullptr && content.table->hasACI() &&
           content.table->size() == CAciTable::count;
}

void printColours(const CPlotStyleTable& table, const Console& console) {
    for (std::size_t index = 0; index < table.size(); ++index) {
        const CPlotStyle& style = *table.style(index);
        if (const std::vector<int> colours = platen::colorsOf(table, style); !colours.empty()) {
            console.out << printable(ut::encodeUtf8(style.name())) << ": "
                        << words::coloursInWords(colours) << '\n';
        }
    }
}

ExitCode convertToNamed(const ConvertOptions& options, const CPlotStyleTable& source,
                        const Console& console) {
    std::wstring prefix;
    if (!ut::decodeUtf8(options.prefix, prefix)) {
        return fail(console, options.in, "the prefix is not UTF-8; nothing was written");
    }
    const auto [named, inOrder] = platen::namedTableOf(source, prefix);
    PiaTree tree;
    if (!named || !named->writeToBlock(tree.root())) {
        return fail(console, options.in, "the table cannot be turned into a named one");
    }
    const ExitCode written = files::writeTree(tree.root(), platen::FileForm::Compressed,
                                              PiaKind::Stb, options.out, console);
    if (written == ExitCode::Error) {
        return written;
    }
    // The words would stand behind the file.
    if (options.out != files::standardStream) {
        printColours(*named, console);
    }
    return inOrder ? written
                   : warn(console, options.in,
                          "a colour does not use the style of its own place in the list; the "
                          "conversion went by the place");
}

/// Makes a table by colour of a named one whose colours have styles, and lists what is lost.
ExitCode convertToColours(const ConvertOptions& options, const CPlotStyleTable& named,
                          const Console& console) {
    const platen::ColourTable made = platen::colourTableOf(named);
    PiaTree tree;
    if (!made.table || !made.table->writeToBlock(tree.root())) {
        return fail(console, options.in, "the table cannot be turned into one by colour");
    }
    ExitCode code = files::writeTree(tree.root(), platen::FileForm::Compressed, PiaKind::Ctb,
                                     options.out, console);
    for (const std::string& lost : made.lost) {
        code = code == ExitCode::Error ? code
                                       : worse(code, warn(console, options.in, "lost: " + lost));
    }
    return code;
}

/// Puts a CSV file into a table.
ExitCode convertCsv(const ConvertOptions& options, const Target& target, const Console& console) {
    if (target.word != "ctb" && target.word != "stb") {
        return fail(console, options.in, "a CSV file becomes a plot style table: a ctb or stb");
    }
    std::string bytes;
    if (!files::readBytes(options.in, bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    const bool overOld = options.base.empty() && options.out != files::standardStream &&
                         ut::fileExists(ut::decodePath(options.out));
    const std::string base = overOld ? options.out : options.base;
    files::TableFile table;
    const ExitCode opened =
        base.empty() ? table.make(target.word == "ctb", console) : table.open(base, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    if (table.source.headerKind() != target.header) {
        return fail(console, base,
                    "the table that the CSV file changes is of another kind; --base names one");
    }
    if (const platen::EditResult done = table.editor.readCsv(bytes); !done) {
        return fail(console, options.in, done->reason + "; nothing was written");
    }
    return worse(opened, table.store(options.out, {.out = options.out}, console));
}

ExitCode rewrite(const platen::SourceFile& source, const Target& target, const std::string& out,
                 const Console& console) {
    const PiaBlock& root = *source.input().root();
    if (target.header) {
        return files::writeTree(root, platen::FileForm::Compressed, *target.header, out, console);
    }
    const bool json = target.word == "json";
    if (!json && source.form() == platen::FileForm::Compressed) {
        return files::writeBytes(source.input().body(), out, console);
    }
    return files::writeTree(root, json ? platen::FileForm::Json : platen::FileForm::BodyText,
                            PiaKind::Pc3, out, console);
}

ExitCode convertSource(const ConvertOptions& options, const Target& target,
                       platen::SourceFile& source, const Console& console) {
    const platen::Content content = platen::recognise(source.input());
    if (const std::string reason = refusal(content, target); !reason.empty()) {
        return fail(console, options.in, reason + "; nothing was written");
    }
    if (target.word == csvWord) {
        return worse(warn(console, options.in, source.input().report()),
                     files::writeBytes(platen::tableCsv(*content.table), options.out, console));
    }
    if (content.kind == platen::FileKind::Stb && target.header == PiaKind::Ctb &&
        !platen::hasStylePerColour(*content.table)) {
        return worse(warn(console, options.in, source.input().report()),
                     convertToColours(options, *content.table, console));
    }
    const bool named = needsNames(content, target);
    if (!named && !options.prefix.empty()) {
        return fail(console, options.in,
                    "--prefix names the styles of a colour table that becomes a named one, and "
                    "this is no such conversion; leave it out");
    }
    ExitCode worst = warn(console, options.in, source.input().report());
    if (content.rejected) {
        worst = warn(console, options.in,
                     "this is no valid plot style table (" +
                         source.input().report().failure().value_or(PiaFinding{}).describe() +
                         "); its items are written as they are");
    }
    return worse(worst, named ? convertToNamed(options, *content.table, console)
                              : rewrite(source, target, options.out, console));
}

ExitCode convertFile(const ConvertOptions& options, const Target& target, const Console& console) {
    if (!options.base.empty() || ut::hasExtension(ut::decodePath(options.in), L"csv")) {
        return convertCsv(options, target, console);
    }
    platen::SourceFile source;
    if (!files::readSource(options.in, source, console, platen::readingUpTo(options.maxBody))) {
        return ExitCode::Error;
    }
    return convertSource(options, target, source, console);
}

/// Writes each of many files into a folder.
ExitCode convertInto(const ConvertOptions& options, const Target& target,
                     const files::Selected& selected, const Console& console) {
    const auto rename = [&target](const std::string& name) {
        return files::nameOf(
            files::pathOf(name).replace_extension(std::filesystem::path(target.extension)));
    };
    return files::intoFolder(
        {options.in, options.out, rename, options.force}, selected,
        {.doing = "converting", .jobs = options.selection.jobs}, console,
        [&](const std::string& file, const std::string& result, const Console& own) {
            ConvertOptions one = options;
            one.in = file;
            one.out = result;
            return convertFile(one, target, own);
        });
}

/// Writes files in another form or as another document.
ExitCode run(const ConvertOptions& options, const Console& console) {
    const Target* target = targetOf(options);
    const files::Selected selected = files::select(options.in, options.selection, console);
    if (selected.isBatch) {
        return target == nullptr || options.to.empty()
                   ? fail(console, options.out,
                          "OUT is a folder here; say what to write with --to ctb, stb, pc3, pmp, "
                          "json, text or csv")
                   : convertInto(options, *target, selected, console);
    }
    if (target == nullptr) {
        return fail(console, options.out,
                    "the name does not say what to convert to; add --to ctb, stb, pc3, pmp, json, "
                    "text or csv");
    }
    return convertFile(options, *target, console);
}

}  // namespace

CommandEntry addConvert(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "convert", "Write a file as another kind or in another form", help);
    const auto options = std::make_shared<ConvertOptions>();
    arguments::takeText(
        command->add_option("IN", options->in, "File to read, @LIST or -; with -r a folder"))
        ->required();
    arguments::addOutput(command, options->out)->required();
    command->add_option("--to", options->to, "What to write; by default as OUT ends")
        ->check(arguments::oneOf({"ctb", "stb", "pc3", "pmp", "json", "text", "csv"}));
    arguments::takeText(command->add_option(
        "--prefix", options->prefix, "Beginning of the names of styles made from colours (Style)"));
    arguments::takeText(command->add_option("--base", options->base,
                                            "Table that a CSV file changes (OUT, or a fresh one)"))
        ->type_name("TABLE");
    arguments::addMaxBody(command, options->maxBody);
    files::addBatch(command, options->selection);
    command->add_flag("--force", options->force,
                      "Replace files in the folder OUT that many results go into");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

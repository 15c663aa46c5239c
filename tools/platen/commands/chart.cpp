#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <platen/chart.h>
#include <platen/chart_files.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/into_folder.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Of a plot style table: each style with its colour as plotted, a line at its true weight, and
its settings in words. Of a plot configuration or plot model parameters: the papers to scale, with
printable areas. Line weights and lengths are true when the page is printed at actual size; a bar
on it tells whether it was.

Examples:
  platen chart pens.ctb -o pens.svg                one picture, for any browser
  platen chart pens.ctb -o pens.pdf --gather       equal pens share a row: 1-9, 250-255
  platen chart pens.ctb -o pens.html --dpi 300     weights as a plotter of 300 dpi prints them,
                                                   and which of them become equal
  platen chart named.stb -o named.png --resolution 300 --title "Office pens"
  platen chart plotter.pc3 -o papers.pdf --paper A4 --orientation portrait
  platen chart plotter.pc3 -o papers.svg --device-papers      those of the device, too
  platen chart pens.ctb -o - | less                SVG to standard output; --to names another
  platen chart -r tables -o pictures --to pdf      pictures of all files of a folder in another
  platen chart pens.ctb --json                     the picture as data, schema platen.scene/1

Several pages are pages of a PDF and sheets of an HTML file; in SVG and PNG they stand below each
other. OUT is replaced when it is a picture of its kind; anything else there is left alone.)";

struct ChartCommand {
    std::string in;
    files::Selection selection;
    std::string out;
    /// "svg" ...; empty: the extension of `out` decides.
    std::string to;
    std::string paper;
    std::string orientation;
    platen::ChartOptions chart{};
    double resolution = platen::usualResolution;
    bool json = false;
    bool force = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

struct Format {
    std::string_view word;
    std::wstring_view extension;
    /// What files of the kind begin with, in lower case.
    std::string_view beginning;
};

constexpr std::array<Format, 4> formats{{
    {"svg", L"svg", "<?xml"},
    {"html", L"html", "<!doctype html"},
    {"png", L"png", "\x89png"},
    {"pdf", L"pdf", "%pdf-"},
}};

const Format* formatOf(const ChartCommand& options) {
    const std::wstring out = ut::decodePath(options.out);
    const auto found = std::ranges::find_if(formats, [&](const Format& format) {
        return options.to.empty() ? ut::hasExtension(out, format.extension)
                                  : format.word == options.to;
    });
    if (found != formats.end()) {
        return &*found;
    }
    return options.out == files::standardStream && options.to.empty() ? formats.data() : nullptr;
}

/// False for a file of another kind, which somebody may want to keep.
bool mayReplace(const std::string& file, const Format& format) {
    std::string begins = files::beginningOf(file, format.beginning.size());
    std::ranges::transform(begins, begins.begin(), [](char character) {
        return static_cast<char>(ut::toLower(static_cast<unsigned char>(character)));
    });
    return begins.empty() || begins == format.beginning;
}

/// Draws the document of a file; `scene` stays when it has none.
ExitCode drawFile(const ChartCommand& options, platen::Scene& scene, const Console& console) {
    const bool isStandard = options.in == files::standardStream;
    const std::wstring path = isStandard ? std::wstring() : ut::decodePath(options.in);
    const PiaReadOptions reading = platen::readingUpTo(options.maxBody);
    PiaInput input;
    std::string bytes;
    if (isStandard && !files::readStandardInput(bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    if (!(isStandard ? input.openBytes(bytes, reading) : input.open(path.c_str(), reading))) {
        return fail(console, options.in, input.report());
    }
    const platen::Content content = platen::readContent(input, path, reading);
    if (content.rejected) {
        return fail(console, options.in, input.report());
    }
    platen::ChartOptions chart = options.chart;
    if (chart.title.empty() && !isStandard) {
        chart.title = ut::encodeUtf8(ut::fileNameOf(path));
    }
    ExitCode code = warn(console, options.in, input.report());
    if (content.table) {
        scene = platen::tableChart(*content.table, chart);
    } else if (content.config) {
        scene = platen::papersChart(*content.config, chart);
        if (content.pmpReport.failure()) {
            code = warn(
                console, options.in,
                "the papers of its PMP are not shown: " + content.pmpReport.failure()->describe());
        }
    } else if (content.parameters) {
        scene = platen::papersChart(*content.parameters, chart);
    } else {
        return fail(console, options.in,
                    "it holds neither styles nor papers; there is nothing to draw");
    }
    return code;
}

ExitCode writeScene(const ChartCommand& options, const Format& format, const platen::Scene& scene,
                    const Console& console) {
    if (format.word == "svg" || format.word == "html") {
        return files::writeBytes(
            format.word == "svg" ? platen::sceneSvg(scene) : platen::sceneHtml(scene), options.out,
            console);
    }
    const platen::SceneFile file = format.word == "png"
                                       ? platen::scenePng(scene, options.resolution)
                                       : platen::scenePdf(scene);
    return file ? files::writeBytes(file.bytes, options.out, console)
                : fail(console, options.out, file.fault);
}

ExitCode chartFile(const ChartCommand& options, const Format& format, const Console& console) {
    if (options.out != files::standardStream && !options.force &&
        !mayReplace(options.out, format)) {
        return fail(console, options.out,
                    "is there already and is no " + std::string(format.word) +
                        " file; choose another name, or add --force to replace it");
    }
    platen::Scene scene;
    const ExitCode code = drawFile(options, scene, console);
    return code == ExitCode::Error ? code
                                   : worse(code, writeScene(options, format, scene, console));
}

ExitCode printScene(const ChartCommand& options, const Console& console) {
    platen::Scene scene;
    const ExitCode code = drawFile(options, scene, console);
    if (code != ExitCode::Error) {
        console.out << platen::sceneJson(scene) << '\n';
    }
    return code;
}

ChartCommand onFile(const ChartCommand& options, const std::string& file,
                    const std::string& result) {
    ChartCommand one = options;
    one.in = file;
    one.out = result;
    return one;
}

/// Takes the sheet from its words; false after a message.
bool takeSheet(ChartCommand& options, const Console& console) {
    if (!options.orientation.empty()) {
        options.chart.orientation = options.orientation == "portrait"
                                        ? platen::ChartOrientation::Portrait
                                        : platen::ChartOrientation::Landscape;
    }
    if (options.paper.empty()) {
        return true;
    }
    options.chart.sheet = platen::chartSheet(options.paper);
    if (options.chart.sheet) {
        return true;
    }
    std::string names;
    for (const std::string& name : platen::chartSheetNames()) {
        names += name + ", ";
    }
    fail(console, "",
         '"' + printable(options.paper) + "\" is no sheet; --paper takes " + names +
             "or millimetres from 100 to 5000, such as 594x420");
    return false;
}

ExitCode run(const ChartCommand& given, const Console& console) {
    ChartCommand options = given;
    if (!takeSheet(options, console)) {
        return ExitCode::Error;
    }
    const files::Selected selected = files::select(options.in, options.selection, console);
    if (options.json) {
        return files::forEachFile(selected, {.doing = "drawing", .jobs = options.selection.jobs},
                                  console, [&](const std::string& file, const Console& own) {
                                      return printScene(onFile(options, file, ""), own);
                                  });
    }
    if (options.out.empty()) {
        return fail(console, "", "say where the picture goes: -o pens.svg, or -o - to see the SVG");
    }
    const Format* format = formatOf(options);
    if (format == nullptr || (selected.isBatch && options.to.empty())) {
        return fail(console, options.out,
                    selected.isBatch
                        ? "OUT is a folder here; say what to draw with --to svg, html, png or pdf"
                        : "the name does not say what to draw; let it end in .svg, .html, .png or "
                          ".pdf, or add --to");
    }
    if (!selected.isBatch) {
        return chartFile(options, *format, console);
    }
    // A configuration and its PMP often have one name, but for the extension.
    const auto rename = [format](const std::string& name) {
        return name + '.' + std::string(format->word);
    };
    return files::intoFolder(
        {options.in, options.out, rename, options.force}, selected,
        {.doing = "drawing", .jobs = options.selection.jobs}, console,
        [&](const std::string& file, const std::string& result, const Console& own) {
            return chartFile(onFile(options, file, result), *format, own);
        });
}

}  // namespace

CommandEntry addChart(CLI::App& program) {
    constexpr double mostDpi = 100000;
    CLI::App* command =
        arguments::addCommand(program, "chart", "Draw pens or papers as a picture or PDF", help);
    const auto options = std::make_shared<ChartCommand>();
    arguments::takeText(
        command->add_option("IN", options->in, "File to draw, @LIST or -; with -r a folder"))
        ->required();
    arguments::addOutput(command, options->out);
    command->add_option("--to", options->to, "What to draw; by default as OUT ends")
        ->check(arguments::oneOf({"svg", "html", "png", "pdf"}));
    arguments::takeText(
        command->add_option("--title", options->chart.title, "Heading (the name of the file)"));
    arguments::takeText(command->add_option("--paper", options->paper,
                                            "Sheet: A3, Letter, 594x420 (by default as it fits)"))
        ->type_name("SHEET");
    command->add_option("--orientation", options->orientation, "How the sheet lies")
        ->check(arguments::oneOf({"portrait", "landscape"}));
    command->add_flag("--gather", options->chart.gather, "Of tables: one row for equal styles");
    command
        ->add_option("--dpi", options->chart.dpi,
                     "Of tables: line weights as a device of so many dots per inch prints them")
        ->check(CLI::Range(1.0, mostDpi))
        ->type_name("N");
    command->add_flag("--device-papers", options->chart.devicePapers,
                      "Of configurations: the papers of a built-in device, too");
    command
        ->add_option("--resolution", options->resolution, "Of PNG pictures: pixels per inch (150)")
        ->check(CLI::Range(1.0, mostDpi))
        ->type_name("N");
    command->add_flag("--json", options->json, "Print the picture as data, one JSON object a line");
    arguments::addMaxBody(command, options->maxBody);
    files::addBatch(command, options->selection);
    command->add_flag("--force", options->force, "Replace files of other kinds");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

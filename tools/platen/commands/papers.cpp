#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/device_papers.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/paper_file.h"
#include "tools/platen/printers/printing.h"
#include "tools/platen/words/paper_list.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Lengths are in millimetres and inches, or in pixels for images.

Examples:
  platen papers --device pdf            papers of "Print As PDF"
  platen papers --device image          papers of the image devices
  platen papers --device none           common plotter papers
  platen papers --catalogue             Windows paper ids
  platen papers --printer Plotter       papers of an installed printer (Windows)
  platen papers a.pc3                   custom papers, also those of the PMP that it names
  platen papers --json a.pmp            one JSON object a line, schema platen.papers/1)";

struct PapersOptions {
    std::string file;
    /// "pdf", "image" or "none".
    std::string device;
    /// An installed printer.
    std::string printer;
    bool catalogue = false;
    bool json = false;
};

void print(const std::vector<words::ShownPaper>& papers, const std::string& source, bool json,
           const Console& console) {
    if (json) {
        words::printPapersAsJson(papers, source, console);
    } else {
        words::printPapers(papers, console);
    }
}

void papersOfDevice(const PapersOptions& options, const Console& console) {
    arguments::DevicePapers device = arguments::DevicePapers::None;
    if (options.device != "none") {
        device =
            options.device == "pdf" ? arguments::DevicePapers::Pdf : arguments::DevicePapers::Image;
    }
    std::vector<words::ShownPaper> list;
    for (const wut::PaperSizeInfo& paper : arguments::tableOf(device)) {
        list.push_back(platen::shown(paper));
    }
    print(list, options.device, options.json, console);
}

ExitCode papersOfFile(const PapersOptions& options, const Console& console) {
    platen::PaperFile file;
    const ExitCode opened =
        files::openPapers(options.file, file, platen::PaperFile::Purpose::Show, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    std::vector<CustomPaperSize> papers;
    file.config().getCustomPaperSizes(papers);
    if (papers.empty() && !options.json) {
        console.out << printable(options.file) << ": no custom papers\n";
        return opened;
    }
    std::vector<words::ShownPaper> list;
    std::transform(papers.begin(), papers.end(), std::back_inserter(list),
                   [](const CustomPaperSize& paper) { return platen::shown(paper); });
    print(list, options.file, options.json, console);
    return opened;
}

/// Lists the papers of a device, of a printer, of a file or of the catalogue.
ExitCode run(const PapersOptions& options, const Console& console) {
    const int sources = (options.device.empty() ? 0 : 1) + (options.catalogue ? 1 : 0) +
                        (options.file.empty() ? 0 : 1) + (options.printer.empty() ? 0 : 1);
    if (sources != 1) {
        return fail(console, options.file,
                    "say whose papers, one at a time: a FILE, --device, --printer or --catalogue");
    }
    if (!options.printer.empty()) {
        return printers::listPapersOfPrinter(options.printer, options.json, console);
    }
    if (options.catalogue) {
        words::printCatalogue(options.json, console);
        return ExitCode::Ok;
    }
    if (!options.file.empty()) {
        return papersOfFile(options, console);
    }
    papersOfDevice(options, console);
    return ExitCode::Ok;
}

}  // namespace

CommandEntry addPapers(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "papers", "List papers of a device, of a printer, of a file or of Windows", help);
    const auto options = std::make_shared<PapersOptions>();
    arguments::takeText(command->add_option(
        "FILE", options->file, "Configuration or parameters whose custom papers to list"));
    command->add_option("--device", options->device, "Papers of the built-in devices")
        ->check(arguments::oneOf({"pdf", "image", "none"}));
    arguments::takeText(command->add_option("--printer", options->printer,
                                            "Papers of an installed printer (Windows)"))
        ->type_name("NAME");
    command->add_flag("--catalogue", options->catalogue, "Windows papers by their ids");
    command->add_flag("--json", options->json, "One JSON object a line");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "tools/platen/arguments/device_papers.h"
#include "tools/platen/commands.h"
#include "tools/platen/paper_file.h"
#include "tools/platen/paper_list.h"
#include "tools/platen/printers/printing.h"

namespace platen {
namespace {

void print(const std::vector<ShownPaper>& papers, const std::string& source, bool json,
           const Console& console) {
    if (json) {
        printPapersAsJson(papers, source, console);
    } else {
        printPapers(papers, console);
    }
}

void papersOfDevice(const PapersOptions& options, const Console& console) {
    DevicePapers device = DevicePapers::None;
    if (options.device != "none") {
        device = options.device == "pdf" ? DevicePapers::Pdf : DevicePapers::Image;
    }
    std::vector<ShownPaper> list;
    for (const wut::PaperSizeInfo& paper : tableOf(device)) {
        list.push_back(shown(paper));
    }
    print(list, options.device, options.json, console);
}

ExitCode papersOfFile(const PapersOptions& options, const Console& console) {
    PaperFile file;
    const ExitCode opened = file.open(options.file, PaperFile::Purpose::Show, console);
    if (opened == ExitCode::Error) {
        return opened;
    }
    std::vector<CustomPaperSize> papers;
    file.config().getCustomPaperSizes(papers);
    if (papers.empty() && !options.json) {
        console.out << printable(options.file) << ": no custom papers\n";
        return opened;
    }
    std::vector<ShownPaper> list;
    std::transform(papers.begin(), papers.end(), std::back_inserter(list),
                   [](const CustomPaperSize& paper) { return shown(paper); });
    print(list, options.file, options.json, console);
    return opened;
}

}  // namespace

ExitCode papers(const PapersOptions& options, const Console& console) {
    const int sources = (options.device.empty() ? 0 : 1) + (options.catalogue ? 1 : 0) +
                        (options.file.empty() ? 0 : 1) + (options.printer.empty() ? 0 : 1);
    if (sources != 1) {
        return fail(console, options.file,
                    "say whose papers, one at a time: a FILE, --device, --printer or --catalogue");
    }
    if (!options.printer.empty()) {
        return listPapersOfPrinter(options.printer, options.json, console);
    }
    if (options.catalogue) {
        printCatalogue(options.json, console);
        return ExitCode::Ok;
    }
    if (!options.file.empty()) {
        return papersOfFile(options, console);
    }
    papersOfDevice(options, console);
    return ExitCode::Ok;
}

}  // namespace platen

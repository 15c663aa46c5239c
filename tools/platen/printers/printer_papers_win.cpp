#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <platen/print.h>
#include <platen/utcore.h>
#include "tools/platen/printers/printer_names.h"
#include "tools/platen/printers/printing.h"
#include "tools/platen/words/paper_list.h"

namespace cli::printers {
namespace {

/// Papers of this number and above are the driver's own.
constexpr unsigned short firstDriverPaper = DMPAPER_USER;
constexpr double tenthsOfMillimetre = 10;

}  // namespace

ExitCode listPapersOfPrinter(const std::string& printer, bool json, const Console& console) {
    std::wstring name;
    if (!findPrinter(printer, name, console)) {
        return ExitCode::Error;
    }
    std::wstring ports;
    CPrnHelper(name.c_str()).getPorts(ports);
    OdArray<unsigned short> ids;
    OdArray<OdString> names;
    OdArray<POINT> sizes;
    if (!wut::PaperSizeGetter(name.c_str(), ports.c_str(), nullptr).get(&ids, &names, &sizes)) {
        return fail(console, printer,
                    "its driver does not say which papers it has; see whether the printer can be "
                    "reached");
    }
    std::vector<words::ShownPaper> papers;
    const std::size_t count = std::min({ids.size(), names.size(), sizes.size()});
    for (std::size_t index = 0; index < count; ++index) {
        words::ShownPaper paper;
        paper.id = ids[index];
        paper.name = names[index].text();
        paper.globalName =
            ids[index] < firstDriverPaper ? paper.name : L"User" + std::to_wstring(ids[index]);
        paper.width = static_cast<double>(sizes[index].x) / tenthsOfMillimetre;
        paper.height = static_cast<double>(sizes[index].y) / tenthsOfMillimetre;
        paper.marginsKnown = false;
        papers.push_back(paper);
    }
    if (json) {
        words::printPapersAsJson(papers, printer, console);
    } else {
        words::printPapers(papers, console);
    }
    return ExitCode::Ok;
}

}  // namespace cli::printers

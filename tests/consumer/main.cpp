// An application of its own that uses the installed library: writes a plot style table, reads it
// back and compares, then checks it. Objects cross the library's border in both directions. Where
// the library can print, loading it brings printers along.
#include <platen/inspect.h>
#include <platen/log.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>

#include <cstdio>
#include <memory>
#include <string>

int main() {
    constexpr bool prints = LIBRARY_PRINTS;
    if ((registerPrinterSystem(nullptr) != nullptr) != prints) {
        std::puts(prints ? "no printers came with the library" : "printers came out of nowhere");
        return 1;
    }
    if (wut::registerLogTarget(nullptr) == nullptr || wut::registerTranslator(nullptr) == nullptr) {
        std::puts("no log or no translations came with the library");
        return 1;
    }
    const wchar_t* path = L"consumer.ctb";
    const std::wstring description = L"Pens of the \u00e9tage";

    const std::unique_ptr<CPlotStyleTable> made(CPlotStyleTable::create(true, description.c_str()));
    if (!made || made->size() != 255) {
        std::puts("no colour-dependent table was made");
        return 1;
    }
    made->style(6)->setScreen(142);
    if (!made->write(path)) {
        std::puts("the table could not be written");
        return 1;
    }

    const std::unique_ptr<CPlotStyleTable> read(CPlotStyleTable::read(path));
    if (!read) {
        std::puts("the table could not be read");
        return 1;
    }
    if (read->description() != description || read->size() != made->size() ||
        read->style(6)->screen() != 142) {
        std::puts("the table that was read is not the one that was written");
        return 1;
    }

    const platen::CheckResult result = platen::check(path);
    for (const platen::Finding& finding : result.findings) {
        std::puts(platen::describe(finding).c_str());
    }
    if (result.findings.size() != 1 || result.findings[0].code != PiaCode::StyleScreenRange ||
        result.findings[0].line != 374U) {
        std::puts("the screening that is no percentage was not found in its line");
        return 1;
    }
    std::puts("written, read and checked");
    return 0;
}

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

namespace {

int fail(const char* what) {
    std::puts(what);
    return 1;
}

}  // namespace

int main() {
    constexpr bool prints = LIBRARY_PRINTS;
    if ((registerPrinterSystem(nullptr) != nullptr) != prints) {
        return fail(prints ? "no printers came with the library" : "printers came out of nowhere");
    }
    if (wut::registerLogTarget(nullptr) == nullptr || wut::registerTranslator(nullptr) == nullptr) {
        return fail("no log or no translations came with the library");
    }
    const wchar_t* path = L"consumer.ctb";
    const std::wstring description = L"Pens of the \u00e9tage";

    const std::unique_ptr<CPlotStyleTable> made(CPlotStyleTable::create(true, description.c_str()));
    if (!made || made->size() != 255) {
        return fail("no colour-dependent table was made");
    }
    made->style(6)->setScreen(142);
    if (!made->write(path)) {
        return fail("the table could not be written");
    }

    const std::unique_ptr<CPlotStyleTable> read(CPlotStyleTable::read(path));
    if (!read) {
        return fail("the table could not be read");
    }
    if (read->description() != description || read->size() != made->size() ||
        read->style(6)->screen() != 142) {
        return fail("the table that was read is not the one that was written");
    }

    const platen::CheckResult result = platen::check(path);
    for (const platen::Finding& finding : result.findings) {
        std::puts(platen::describe(finding).c_str());
    }
    if (result.findings.size() != 1 || result.findings[0].code != PiaCode::StyleScreenRange ||
        result.findings[0].line != 374U) {
        return fail("the screening that is no percentage was not found in its line");
    }
    std::puts("written, read and checked");
    return 0;
}

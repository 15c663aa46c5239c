// A program of its own that uses the installed core, without wxWidgets: makes a table, edits it by
// path, checks it, prints what is found, with lines, and bundles it.
#include <platen/edit.h>
#include <platen/house.h>
#include <platen/inspect.h>
#include <platen/log.h>

#include <iostream>
#include <memory>
#include <string>

int main() {
    const std::wstring path = L"core.ctb";
    const std::unique_ptr<CPlotStyleTable> made(CPlotStyleTable::create(true, L"Pens"));
    platen::SourceFile file;
    if (!made || !made->write(path.c_str()) || !file.read(path)) {
        std::cout << "no table was written and read\n";
        return 1;
    }
    const platen::EditResult done =
        platen::ItemEditor(*file.input().root()).set(L"plot_style/6/screen", L"142");
    if (!done || !file.write(path)) {
        std::cout << (done ? "the table cannot be written" : done->reason) << '\n';
        return 1;
    }
    const platen::CheckResult result = platen::check(path);
    for (const platen::Finding& finding : result.findings) {
        std::cout << platen::describe(finding) << '\n';
    }
    platen::BundleWriter bundle({.date = L"2026-01-31"});
    std::string archive;
    if (!bundle.add(path, path).file || bundle.finish(archive).files.size() != 1 ||
        archive.empty()) {
        std::cout << "the table cannot be bundled\n";
        return 1;
    }
    // Nothing but the core came along.
    const bool alone = wut::registerLogTarget(nullptr) == nullptr;
    return alone && result.findings.size() == 1 && result.findings[0].line == 374U ? 0 : 1;
}

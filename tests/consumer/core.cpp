// A program of its own that uses the installed core, without wxWidgets: no log, no printers, no
// library to load; the documents are all there.
#include <platen/log.h>
#include <platen/plotcfg.h>

#include <cstdio>
#include <memory>

int main() {
    const std::unique_ptr<CPlotCfg3> made(CPlotCfg3::create(BuiltInPlotDevice::pdfName));
    if (!made || wut::registerLogTarget(nullptr) != nullptr ||
        registerPrinterSystem(nullptr) != nullptr || !made->write(L"core.pc3")) {
        std::puts("no configuration was written, or more than the core came along");
        return 1;
    }
    bool printerChanged = false;
    const std::unique_ptr<CPlotCfg3> read(CPlotCfg3::read(L"core.pc3", printerChanged));
    if (!read || !CPlotCfg3::isBuiltInPDF(read.get())) {
        std::puts("the configuration could not be read back");
        return 1;
    }
    return 0;
}

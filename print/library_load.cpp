/// Part of the shared library alone: documents get their printers when it is loaded. A program that
/// links the objects registers what it wants.

#include <platen/plotcfg.h>
#include <platen/print.h>

namespace {

class Registration {
public:
    Registration() { registerPrinterSystem(&wut::installedPrinters()); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { registerPrinterSystem(nullptr); }
};

const Registration registration;

}  // namespace

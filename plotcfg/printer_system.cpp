#include <atomic>
#include <cstddef>

#include <platen/plotcfg.h>
#include "plotcfg/registered_printers.h"

namespace {

std::atomic<const PrinterSystem*> registered{nullptr};

/// What there is without printing: no printer.
class NoPrinters : public PrinterSystem {
public:
    std::wstring defaultPrinter() const override { return {}; }
    bool hasPrinter(const std::wstring&) const override { return false; }
    bool fillNew(CPlotCfg3&, const std::wstring&) const override { return false; }
    bool reset(CPlotCfg3&, bool&) const override { return false; }
    bool resolveByDriver(CPlotCfg3&) const override { return false; }
};

}  // namespace

PrinterSystem::~PrinterSystem() = default;

const PrinterSystem* registerPrinterSystem(const PrinterSystem* system) {
    return registered.exchange(system);
}

const PrinterSystem& plot_config::printers() {
    static const NoPrinters none;
    const PrinterSystem* system = registered;
    return system != nullptr ? *system : none;
}

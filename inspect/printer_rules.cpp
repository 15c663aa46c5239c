#include "inspect/printer_rules.h"

namespace platen {

InstalledPrinters::~InstalledPrinters() = default;

void checkPrinter(const CPlotCfg3& config, const InstalledPrinters& printers,
                  FindingList& findings) {
    if (config.builtInDevice() != nullptr) {
        return;
    }
    CPlotCfg3 used(config);
    if (printers.moveByDriver(used)) {
        findings.warn(
            {.code = PiaCode::PrinterMoved,
             .path = L"meta/win_device_name",
             .expected = config.meta.winDeviceName + L" with driver " + config.meta.winDriverName,
             .found = used.meta.winDeviceName});
    }
    PiaReport report;
    printers.apply(used, report);
    findings.addWarnings(report);
    if (report.failure()) {
        findings.add(*report.failure(), Severity::Error);
    }
}

}  // namespace platen

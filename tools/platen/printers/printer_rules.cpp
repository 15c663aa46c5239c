#include "tools/platen/printers/printer_rules.h"

#include "tools/platen/printers/installed_printers.h"

namespace cli::printers {
namespace {

constexpr platen::Rule printerMoved{
    "printer-moved", "programs that plot will use another printer of the same driver",
    "install the printer, or move the configuration with platen migrate"};

}  // namespace

void checkPrinter(const CPlotCfg3& config, platen::FindingList& findings) {
    if (config.builtInDevice() != nullptr) {
        return;
    }
    CPlotCfg3 used(config);
    if (moveByDriver(used)) {
        findings.add(
            {.rule = printerMoved,
             .path = L"meta/win_device_name",
             .expected = config.meta.winDeviceName + L" with driver " + config.meta.winDriverName,
             .found = used.meta.winDeviceName});
    }
    PiaReport report;
    applyToPrinter(used, report);
    findings.addWarnings(report);
    if (report.failure()) {
        findings.add(*report.failure(), platen::Severity::Error);
    }
}

}  // namespace cli::printers

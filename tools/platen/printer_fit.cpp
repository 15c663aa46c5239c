#include "tools/platen/printer_fit.h"

#include <algorithm>

#include "papers.h"
#include "tools/platen/words.h"
#include "utcore.h"

namespace platen {
namespace {

void compareDriver(const CPlotCfg3& config, const InstalledPrinter& printer,
                   std::vector<std::string>& reasons) {
    const std::wstring& old = config.meta.winDriverName;
    if (!old.empty() && !printer.driver.empty() && !ut::equalNoCase(old, printer.driver)) {
        reasons.push_back("the driver was " + quoted(old) + " and is now " +
                          quoted(printer.driver) +
                          "; settings of the old one's own are kept and mean nothing to it");
    }
}

void compareDeviceMode(const CPlotCfg3& config, const InstalledPrinter& printer,
                       std::vector<std::string>& reasons) {
    int common = 0;
    int own = 0;
    if (!config.custom || printer.deviceModeBytes == 0 || !config.custom->get(common, L"dmSize") ||
        !config.custom->get(own, L"dmDriverExtra")) {
        return;
    }
    const std::int64_t stored = std::int64_t{common} + own;
    if (stored != printer.deviceModeBytes) {
        reasons.push_back("the driver's device mode has " +
                          std::to_string(printer.deviceModeBytes) + " bytes, the stored one " +
                          std::to_string(stored) +
                          "; the driver's own settings are kept and will not be applied");
    }
}

void comparePaper(const CPlotCfg3& config, const InstalledPrinter& printer,
                  std::vector<std::string>& reasons) {
    const std::wstring& paper = config.media.size.name;
    int id = 0;
    const bool known =
        paper.empty() || wut::isCustomPaperSize(id, paper.c_str()) ||
        std::any_of(printer.papers.begin(), printer.papers.end(),
                    [&](const std::wstring& name) { return ut::equalNoCase(name, paper); });
    if (!known) {
        reasons.push_back("the printer has no paper " + quoted(paper) +
                          "; it will use its own default");
    }
}

}  // namespace

std::vector<std::string> misfits(const CPlotCfg3& config, const InstalledPrinter& printer) {
    std::vector<std::string> reasons;
    compareDriver(config, printer, reasons);
    compareDeviceMode(config, printer, reasons);
    comparePaper(config, printer, reasons);
    return reasons;
}

}  // namespace platen

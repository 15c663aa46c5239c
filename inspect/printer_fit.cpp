#include <algorithm>
#include <cstdint>

#include <platen/inspect.h>
#include <platen/papers.h>
#include <platen/utcore.h>

namespace platen {
namespace {

std::string quoted(std::wstring_view text) {
    return '"' + ut::printable(ut::encodeUtf8(text)) + '"';
}

/// The settings of the driver's own are bytes that only it understands. They are applied when the
/// device mode is as long as that of the driver, whichever it is.
void compareDriver(const CPlotCfg3& config, const InstalledPrinter& printer,
                   std::vector<std::string>& reasons) {
    int common = 0;
    int own = 0;
    const bool stored = config.custom && config.custom->get(common, L"dmSize") &&
                        config.custom->get(own, L"dmDriverExtra");
    const std::int64_t bytes = std::int64_t{common} + own;
    const bool fits = !stored || bytes == printer.deviceModeBytes;
    const std::wstring& old = config.meta.winDriverName;
    if (!old.empty() && !printer.driver.empty() && !ut::equalNoCase(old, printer.driver)) {
        const bool mistaken = fits && own > 0;
        reasons.push_back("the driver was " + quoted(old) + " and is now " +
                          quoted(printer.driver) +
                          (mistaken ? ", which will take the " + std::to_string(own) +
                                          " bytes of the old one's own settings for its own; "
                                          "choose the printer again in a program that plots"
                                    : ""));
    }
    if (!fits && printer.deviceModeBytes != 0) {
        reasons.push_back("the driver's device mode has " +
                          std::to_string(printer.deviceModeBytes) + " bytes, the stored one " +
                          std::to_string(bytes) +
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
    comparePaper(config, printer, reasons);
    return reasons;
}

}  // namespace platen

#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_names.h"

namespace cli::printers {

std::string printersFault() { return "only on Windows can printers be asked"; }

std::optional<InstalledPrinter> askPrinter(const std::wstring&) { return std::nullopt; }
std::vector<std::wstring> printerNames() { return {}; }
bool moveByDriver(CPlotCfg3&) { return false; }
void applyToPrinter(const CPlotCfg3&, PiaReport&) {}
std::unique_ptr<CPlotCfg3> configurationOf(const std::wstring&) { return nullptr; }

}  // namespace cli::printers

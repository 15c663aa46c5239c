#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_names.h"

namespace cli::printers {

std::string printersFault() { return "only on Windows can printers be asked"; }

const platen::InstalledPrinters* installedPrinters() { return nullptr; }
std::optional<platen::InstalledPrinter> askPrinter(const std::wstring&) { return std::nullopt; }
std::vector<std::wstring> printerNames() { return {}; }
std::unique_ptr<CPlotCfg3> configurationOf(const std::wstring&) { return nullptr; }

}  // namespace cli::printers

/// The printers of this machine, as far as commands ask them. Only Windows has any.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <platen/inspect.h>
#include <platen/plotcfg.h>

namespace cli::printers {

/// Why this system has no printers to ask; empty when it has.
std::string printersFault();

/// The library's, with the print system running while they are asked; null when there are none.
const platen::InstalledPrinters* installedPrinters();

/// Nothing when there is no such printer, or when it cannot be opened.
std::optional<platen::InstalledPrinter> askPrinter(const std::wstring& name);

/// A configuration with the defaults of an installed printer; null when they cannot be taken.
std::unique_ptr<CPlotCfg3> configurationOf(const std::wstring& printer);

}  // namespace cli::printers

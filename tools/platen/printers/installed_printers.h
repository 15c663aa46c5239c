/// The printers of this machine, as far as commands ask them. Only Windows has any.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platen/pia.h>
#include <platen/plotcfg.h>

namespace cli::printers {

/// Why this system has no printers to ask; empty when it has.
std::string printersFault();

/// What a configuration has to suit.
struct InstalledPrinter {
    /// Empty when the spooler does not say.
    std::wstring driver;
    /// Bytes of its device mode, those of the driver included; 0 when the driver does not say.
    std::int64_t deviceModeBytes = 0;
    std::vector<std::wstring> papers;
};

/// Nothing when there is no such printer, or when it cannot be opened.
std::optional<InstalledPrinter> askPrinter(const std::wstring& name);

/// Moves the configuration to a printer of its driver when its own is gone; true when it did.
bool moveByDriver(CPlotCfg3& config);
/// Applies the configuration to its printer as plotting does. A failure of the report says why that
/// is impossible, warnings which settings do not arrive.
void applyToPrinter(const CPlotCfg3& config, PiaReport& report);
/// A configuration with the defaults of an installed printer; null when they cannot be taken.
std::unique_ptr<CPlotCfg3> configurationOf(const std::wstring& printer);

}  // namespace cli::printers

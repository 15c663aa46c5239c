/// The PMP that a configuration names.
#pragma once

#include <memory>
#include <string>

#include <platen/pia.h>
#include <platen/plotcfg.h>

namespace plot_config {

struct NamedPmp {
    /// Null when it was not found or cannot be read.
    std::unique_ptr<PlotModelParam> document;
    /// Where it was found; empty when it was not.
    std::wstring path;
    /// What came of looking for it and reading it.
    PiaReport report;
};

/// Looks for the PMP in the folder of the configuration and in that of the setting "PlotCfgPath",
/// and reads it.
NamedPmp readNamedPmp(const std::wstring& name, const std::wstring& configuration,
                      const PiaReadOptions& options = {});

/// Attaches the PMP that the configuration, which is in the file at `path`, names. False when there
/// is none of that name, or none that can be read, of which `report` is warned.
bool attachNamedPmp(CPlotCfg3& config, const std::wstring& path, PiaReport& report);

}  // namespace plot_config

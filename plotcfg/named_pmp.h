/// The PMP that a configuration names.
#pragma once

#include <memory>
#include <string>

#include <platen/pia.h>
#include <platen/pmp.h>

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

}  // namespace plot_config

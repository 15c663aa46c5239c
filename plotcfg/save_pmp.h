/// Saving the PMP of a configuration.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <platen/plotcfg.h>

namespace plot_config {

/// Writes the PMP that is attached to its own file or, when it has none or that cannot be written,
/// where `placeForPmp` says for a configuration at `path`. PMP and configuration then name the file
/// by its full path; when it is written nowhere, both stay as they are.
/// `write(path)` writes the file; `mayGoTo(path)` says whether that place may be taken.
bool savePmp(CPlotCfg3& config, std::wstring_view path,
             const std::function<bool(const std::wstring&)>& write,
             const std::function<bool(const std::wstring&)>& mayGoTo);

}  // namespace plot_config

/// What goes when a file is replaced.
#pragma once

#include <string>
#include <vector>

#include <platen/pia.h>
#include "tools/platen/console/console.h"

namespace cli::files {

/// The paths of the items that go with the plotter file at `file` when `replacement` takes its
/// place; none when there is no such file.
std::vector<std::wstring> lostWith(const std::string& file, const PiaBlock& replacement);

/// Lists them once the file was replaced. `Ok` when there are none.
ExitCode warnOfLosses(const std::vector<std::wstring>& lost, const std::string& file,
                      const Console& console);

}  // namespace cli::files

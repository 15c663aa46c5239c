/// Fresh plot configurations and plot model parameters.
#pragma once

#include <platen/pia.h>
#include "tools/platen/commands.h"

namespace platen {

/// Writes the configuration of a device into `root`. `Error` after a message.
ExitCode makeConfiguration(const CreateOptions& options, PiaBlock& root, const Console& console);

/// Writes the parameters for the configuration `options.from` into `root`. `Error` after a
/// message, `Warnings` when the configuration has some.
ExitCode makeParameters(const CreateOptions& options, PiaBlock& root, const Console& console);

}  // namespace platen

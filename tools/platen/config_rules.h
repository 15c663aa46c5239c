/// What a plot configuration may hold although it makes no sense.
#pragma once

#include <platen/pia.h>
#include "tools/platen/findings.h"
#include "tools/platen/recognise.h"

namespace platen {

/// Checks `content.config`, which was read from `input`.
void checkConfig(const PiaInput& input, const Content& content, FindingList& findings);

}  // namespace platen

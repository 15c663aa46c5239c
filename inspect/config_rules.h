/// What a plot configuration may hold although it makes no sense.
#pragma once

#include <platen/pia.h>
#include "inspect/finding_list.h"

namespace platen {

/// Checks `content.config`, which was read from `input`.
void checkConfig(const PiaInput& input, const Content& content, FindingList& findings);

}  // namespace platen

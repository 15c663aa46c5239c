/// What plot model parameters may hold although it makes no sense.
#pragma once

#include <platen/pia.h>
#include <platen/pmp.h>
#include "inspect/finding_list.h"

namespace platen {

/// `parameters` were read from `input`.
void checkParameters(const PiaInput& input, const PlotModelParam& parameters,
                     FindingList& findings);

}  // namespace platen

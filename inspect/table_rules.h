/// What a plot style table may hold although it makes no sense.
#pragma once

#include <optional>

#include <platen/pia.h>
#include <platen/plotstyle.h>
#include "inspect/finding_list.h"

namespace platen {

/// `header` is the kind in the file's header, if it has one.
void checkTable(const CPlotStyleTable& table, std::optional<PiaKind> header, FindingList& findings);

}  // namespace platen

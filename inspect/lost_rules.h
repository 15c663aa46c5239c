/// Findings about what a document leaves behind of its file.
#pragma once

#include <vector>

#include <platen/inspect.h>
#include "inspect/finding_list.h"

namespace platen {

void addLost(const std::vector<LostItem>& lost, FindingList& findings);

}  // namespace platen

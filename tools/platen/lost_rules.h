/// Findings about what a document leaves behind of its file.
#pragma once

#include <vector>

#include "tools/platen/findings.h"
#include "tools/platen/lost_items.h"

namespace platen {

void addLost(const std::vector<LostItem>& lost, FindingList& findings);

}  // namespace platen

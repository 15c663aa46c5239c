/// Mending the documents in salvaged trees.
#pragma once

#include <optional>
#include <string>

#include <platen/pia.h>
#include "edit/repair_tree.h"

namespace platen {

/// A plot style table. `header` is the kind that the file has or gets. False when there is no
/// style.
bool mendTable(PiaBlock& root, PiaKind& header, TreeRepair& repair);

void mendConfiguration(PiaBlock& root, TreeRepair& repair);
void mendParameters(PiaBlock& root, TreeRepair& repair);

/// The name of the PMP in a configuration that is in `file`, where it leads to none.
void mendPmpName(PiaBlock& root, const std::wstring& file, TreeRepair& repair);

}  // namespace platen

/// What a file would lose if it were written again.
#pragma once

#include <platen/pia.h>
#include "inspect/finding_list.h"

namespace platen {

/// The file itself is not at fault, so that even what could not be written is a warning.
void checkRewriting(const PiaInput& input, FindingList& findings);

/// True when the tree of `input` certainly reads back as it stands from the body that a writer
/// makes of it: then nobody needs to make that body. Much faster, and says so of nearly all files.
bool surelyReadsBack(const PiaInput& input);

}  // namespace platen

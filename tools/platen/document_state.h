/// Whether a tree still is the document that it was.
#pragma once

#include <string>

#include <platen/pia.h>
#include "tools/platen/recognise.h"

namespace platen {

struct DocumentState {
    /// What the tree has the marks of.
    FileKind kind = FileKind::Pia;
    /// Why the library refuses the document; empty when it takes it or there is none.
    std::string fault;
};

/// Reads the document in the tree. The input's report is left empty.
DocumentState documentState(PiaInput& input);

/// What became unreadable on the way from `before` to `after`; empty when nothing did.
std::string lostDocument(const DocumentState& before, const DocumentState& after);

}  // namespace platen

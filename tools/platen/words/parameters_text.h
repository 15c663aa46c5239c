/// Plot model parameters in words.
#pragma once

#include <iosfwd>

#include <platen/pmp.h>

namespace cli::words {

/// What the document says, one line each.
void describeParameters(const PlotModelParam& parameters, std::ostream& out);

}  // namespace cli::words

/// From a printer's pixels to the paper of a document.
#pragma once

#include <wx/gdicmn.h>

#include <platen/plotcfg.h>

namespace print_bridge {

/// Fills paper and printable bounds from the paper's rectangle, whose origin is minus the margin,
/// both in pixels of `ppi`. True when a bound changed. Without resolution or area everything stays
/// as it was, and false is returned.
bool setBounds(CMediaNode& media, const wxSize& ppi, const wxRect& paper);

}  // namespace print_bridge

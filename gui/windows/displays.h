/// Where displays lie and which one a rectangle belongs to, without asking the system.
#pragma once

#include <wx/gdicmn.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace wut {

/// Pixels of the screen.
struct Display {
    wxRect geometry;
    /// Without task bars.
    wxRect clientArea;
};

struct Displays {
    std::vector<Display> all;
    /// Index of the display that shows the application's top window. None without a top window, or
    /// when no display shows it.
    std::optional<std::size_t> ofTopWindow;
};

/// The system's, as they are now.
Displays systemDisplays();

/// What `adjustWindowRectangleToDisplay` makes of `rect`. A place that coordinates cannot express
/// is replaced by the nearest that they can.
wxRect fitToDisplay(const wxRect& rect, const Displays& displays, bool clientAreaOnly);

}  // namespace wut

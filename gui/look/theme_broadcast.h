/// How the news of another colour theme reach windows.
#pragma once

class wxWindow;

namespace wut {

/// Sends the event to this window alone, which may be destroyed by it.
void sendThemeChanged(wxWindow& window);

/// Tells all that is within the window; on Windows also its own native window.
void tellThemeChangedWithin(wxWindow& window);

/// Tells windows of the application that wxWidgets does not know.
void tellThemeChangedOwned();

}  // namespace wut

/// What plotting dialogs share: pixels and pictures, wrapped text, the look of windows, windows of
/// the system, services of the system. Needs wxWidgets' core and XML resources.
///
/// All of it belongs to the thread of the GUI unless a function says otherwise.
#pragma once

#include "gui_images.h"
#include "gui_os.h"

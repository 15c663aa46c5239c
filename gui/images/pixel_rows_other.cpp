#include "gui/images/pixel_rows.h"

namespace pixel_rows {

bool useProcessor(Kernel&) { return false; }

}  // namespace pixel_rows

#include "platform/utcore/file_permissions.h"

namespace ut {

// The interface to the system knows neither owners nor permissions.
int copyFilePermissions(const char* /*model*/, int /*file*/) { return 0; }

}  // namespace ut

/// How others see that a file is in use by a process that is still there.
#pragma once

#include "platform/utcore/file_system.h"

namespace ut {

/// Holds an open file that was just made until `holder` is closed, by which the process has it a
/// second time. Returns an error of the system; EBUSY when another process is removing the file.
int holdFile(int file, int& holder);

/// Removes the file at `path` unless somebody holds it.
Left removeUnheld(const char* path);

}  // namespace ut

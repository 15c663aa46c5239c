/// The system's kinds of drives.
#pragma once

#include <platen/gui_os.h>

namespace wut {

/// The kind for what GetDriveTypeW returns.
EFSVolumeKind volumeKind(unsigned driveType);

}  // namespace wut

/// Who may do what with a file, where files are numbered descriptors.
#pragma once

namespace ut {

/// Gives the open file the owner and the permissions of the file at `model`, as far as the system
/// lets it: what an owner or a group that cannot be given was granted, the new one is not. Returns
/// 0 or the system's error.
int copyFilePermissions(const char* model, int file);

}  // namespace ut

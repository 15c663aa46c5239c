#include "platform/utcore/file_permissions.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace ut {

int copyFilePermissions(const char* model, int file) {
    struct stat wanted {};
    struct stat own {};
    if (::stat(model, &wanted) != 0 || ::fstat(file, &own) != 0) {
        return errno;
    }
    mode_t mode = wanted.st_mode & 07777;
    // Only the superuser gives files away; who saves another's file becomes its owner.
    if (wanted.st_uid != own.st_uid && ::fchown(file, wanted.st_uid, static_cast<gid_t>(-1)) != 0) {
        mode &= ~static_cast<mode_t>(S_ISUID);
    }
    if (wanted.st_gid != own.st_gid && ::fchown(file, static_cast<uid_t>(-1), wanted.st_gid) != 0) {
        // What the old group was granted is not for the new one.
        mode = (mode & ~static_cast<mode_t>(S_ISGID | S_IRWXG)) | (mode & S_IRWXO) << 3;
    }
    if (mode != (own.st_mode & 07777) && ::fchmod(file, mode) != 0) {
        return errno;
    }
    return 0;
}

}  // namespace ut

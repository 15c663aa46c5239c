#include "platform/utcore/file_hold.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace ut {

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    int number() const { return number_; }

private:
    int number_;
};

/// Locks of other machines are not always seen here, and asking for one may take for ever where the
/// server's locks do not work.
bool mayBeOnOtherMachines(int file) {
    constexpr std::uint32_t shared[] = {NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC,  CIFS_SUPER_MAGIC,
                                        SMB2_SUPER_MAGIC, AFS_SUPER_MAGIC,  AFS_FS_MAGIC,
                                        CEPH_SUPER_MAGIC, CODA_SUPER_MAGIC, FUSE_SUPER_MAGIC,
                                        V9FS_MAGIC,       OCFS2_SUPER_MAGIC};
    struct statfs status {};
    return ::fstatfs(file, &status) != 0 ||
           std::ranges::find(shared, static_cast<std::uint32_t>(status.f_type)) != std::end(shared);
}

}  // namespace

int holdFile(int file, int& holder) {
    struct stat status {};
    if (!mayBeOnOtherMachines(file)) {
        // A lock belongs to the open file, however many descriptors it has. A file system without
        // locks has none for `removeUnheld` either.
        const bool locked = ::flock(file, LOCK_EX | LOCK_NB) == 0;
        if ((!locked && errno == EWOULDBLOCK) ||
            (locked && ::fstat(file, &status) == 0 && status.st_nlink == 0)) {
            return EBUSY;
        }
    }
    holder = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
    return holder < 0 ? errno : 0;
}

Left removeUnheld(const char* path) {
    const Descriptor file(::open(path, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.number() < 0) {
        return errno == ENOENT ? Left::Gone : Left::Unknown;
    }
    struct stat opened {};
    const uid_t user = ::geteuid();
    // Others could keep us waiting.
    if (::fstat(file.number(), &opened) != 0 || !S_ISREG(opened.st_mode) ||
        (opened.st_uid != user && user != 0) || mayBeOnOtherMachines(file.number())) {
        return Left::Unknown;
    }
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? Left::InUse : Left::Unknown;
    }
    // It may have got its other name meanwhile, and the next one may stand in its place. Once it is
    // known to be this one, it stays: who made it holds it or is not there any more.
    struct stat named {};
    if (::lstat(path, &named) != 0) {
        return errno == ENOENT ? Left::Gone : Left::Unknown;
    }
    if (named.st_dev != opened.st_dev || named.st_ino != opened.st_ino) {
        return Left::InUse;
    }
    return ::unlink(path) == 0 ? Left::Gone : Left::Unknown;
}

}  // namespace ut

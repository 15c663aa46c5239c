/// The operating system's calls on files, one by one: so much as reading and replacing a file
/// takes. Tests put a failing one in place of the system's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <platen/utcore.h>

namespace ut {

/// What a path to be written stands for.
struct Destination {
    /// The file itself: no symbolic link.
    std::wstring path;
    bool exists = false;
    /// A device or a pipe, which is written to and never replaced.
    bool isDevice = false;
};

/// What has become of a file that another process made.
enum class Left {
    Gone,
    InUse,
    /// It is not known who made it, or whether they are still there.
    Unknown,
};

/// Every call that returns an error without a code has succeeded.
class FileSystem {
public:
    using File = std::intptr_t;

    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem();

    /// `size` is a hint: 0 where there is none, and the file may change meanwhile.
    virtual SystemError openForReading(const std::wstring& path, File& file,
                                       std::uint64_t& size) = 0;
    /// Reads at most `room` bytes; a `count` of 0 means the end.
    virtual SystemError read(File file, char* bytes, std::size_t room, std::size_t& count) = 0;
    /// What a read reports when a file goes beyond its limit.
    virtual SystemError tooLarge() const = 0;

    /// Follows symbolic links, also to a file that does not exist. Fails when `path` is a folder
    /// or a file that may not be written.
    virtual SystemError findDestination(const std::wstring& path, Destination& destination) = 0;
    /// Creates a file; fails with `taken` when the path exists. A file made to replace another gets
    /// permissions from `copyPermissions`, and until then grants no more than the other can have
    /// granted. Until `held` is released or this process ends, however it ends, the file is in use.
    virtual SystemError create(const std::wstring& path, bool replaces, File& file, File& held) = 0;
    virtual SystemError taken() const = 0;
    /// Removes a file that `create` made when nobody uses it any more.
    virtual Left removeAbandoned(const std::wstring& path) = 0;
    /// Closes `held`.
    virtual void release(File held) = 0;
    /// Removes a file that is in use by ourselves and closes `held`.
    virtual void discard(const std::wstring& path, File held) = 0;
    /// A moment, for others to be done.
    virtual void pause() = 0;
    virtual SystemError openDevice(const std::wstring& path, File& file) = 0;
    /// Writes at least one byte of non-empty `bytes`; `count` tells how many.
    virtual SystemError write(File file, std::string_view bytes, std::size_t& count) = 0;
    /// Gives `file` the permissions of the file at `path`.
    virtual SystemError copyPermissions(const std::wstring& path, File file) = 0;
    /// Waits until the device holds what was written.
    virtual SystemError flush(File file) = 0;
    /// The file is closed also when it fails.
    virtual SystemError close(File file) = 0;
    virtual SystemError rename(const std::wstring& from, const std::wstring& to) = 0;
    virtual void remove(const std::wstring& path) = 0;
    /// Makes a change of the names in the folder of `path` last, as far as the system can.
    virtual void flushFolder(const std::wstring& path) = 0;
};

FileSystem& systemFiles();

// The public functions of the same names, over any file system.

SystemError readFile(FileSystem& files, const std::wstring& path, std::uint64_t limit,
                     ByteBuffer& bytes, bool& tooLarge);
SystemError replaceFile(FileSystem& files, const std::wstring& path,
                        std::span<const std::string_view> pieces,
                        const std::function<bool()>& mayReplace, bool& refused);

}  // namespace ut

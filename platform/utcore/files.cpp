#include <algorithm>
#include <random>

#include "platform/utcore/file_system.h"
#include "platform/utcore/path.h"

namespace ut {

namespace {

/// A name beside `path` that nobody can guess and take first. It does not contain the name of
/// `path`, which may be as long as a name can be.
std::wstring temporaryBeside(const std::wstring& path) {
    // The system is asked once for each thread: asking for every file costs as much as a small one.
    thread_local std::mt19937_64 random = [] {
        std::random_device source;
        std::seed_seq seed{source(), source(), source(), source()};
        return std::mt19937_64(seed);
    }();
    std::wstring name = L".platen-";
    for (int word = 0; word < 2; ++word) {
        std::uint64_t bits = random();
        for (int digit = 0; digit < 16; ++digit, bits >>= 4) {
            name += L"0123456789abcdef"[bits & 0xF];
        }
    }
    return path.substr(0, lastComponent(path)) + name;
}

SystemError writeAll(FileSystem& files, FileSystem::File file,
                     std::span<const std::string_view> pieces) {
    for (std::string_view piece : pieces) {
        while (!piece.empty()) {
            std::size_t count = 0;
            if (const SystemError error = files.write(file, piece, count)) {
                return error;
            }
            piece.remove_prefix(count);
        }
    }
    return {};
}

SystemError writeDevice(FileSystem& files, const std::wstring& path,
                        std::span<const std::string_view> pieces) {
    FileSystem::File file{};
    if (const SystemError error = files.openDevice(path, file)) {
        return error;
    }
    const SystemError written = writeAll(files, file, pieces);
    const SystemError closed = files.close(file);
    return written ? written : closed;
}

/// Fills the temporary file and closes it in any case.
SystemError fill(FileSystem& files, FileSystem::File file, const Destination& destination,
                 std::span<const std::string_view> pieces) {
    SystemError error = writeAll(files, file, pieces);
    if (!error && destination.exists) {
        // After the content, because writing takes away some permissions.
        error = files.copyPermissions(destination.path, file);
    }
    if (!error) {
        error = files.flush(file);
    }
    const SystemError closed = files.close(file);
    return error ? error : closed;
}

}  // namespace

FileSystem::~FileSystem() = default;

SystemError readFile(FileSystem& files, const std::wstring& path, std::uint64_t limit,
                     ByteBuffer& bytes, bool& tooLarge) {
    tooLarge = false;
    FileSystem::File file{};
    std::uint64_t size = 0;
    if (const SystemError error = files.openForReading(path, file, size)) {
        return error;
    }
    // One byte beyond the expected end shows that it is the end; one beyond the limit, that the
    // file goes on.
    const std::uint64_t mostRoom = std::max(limit, limit + 1);
    ByteBuffer content;
    SystemError error;
    std::uint64_t room = std::max<std::uint64_t>(size, 4095) + 1;
    for (;;) {
        content.reserve(static_cast<std::size_t>(std::min(room, mostRoom)));
        std::size_t count = 0;
        error = files.read(file, content.data() + content.size(),
                           content.capacity() - content.size(), count);
        if (error || count == 0) {
            break;
        }
        content.setSize(content.size() + count);
        if (content.size() > limit) {
            tooLarge = true;
            error = files.tooLarge();
            break;
        }
        if (content.size() == content.capacity()) {
            room = std::uint64_t{content.capacity()} * 2;
        }
    }
    static_cast<void>(files.close(file));
    if (!error) {
        bytes = std::move(content);
    }
    return error;
}

SystemError replaceFile(FileSystem& files, const std::wstring& path,
                        std::span<const std::string_view> pieces) {
    Destination destination;
    if (const SystemError error = files.findDestination(path, destination)) {
        return error;
    }
    if (destination.isDevice) {
        return writeDevice(files, destination.path, pieces);
    }
    const std::wstring temporary = temporaryBeside(destination.path);
    FileSystem::File file{};
    if (const SystemError error = files.create(temporary, destination.exists, file)) {
        return error;
    }
    SystemError error = fill(files, file, destination, pieces);
    if (!error) {
        error = files.rename(temporary, destination.path);
    }
    if (error) {
        files.remove(temporary);
        return error;
    }
    files.flushFolder(destination.path);
    return {};
}

SystemError readFile(std::wstring_view path, std::uint64_t limit, ByteBuffer& bytes,
                     bool& tooLarge) {
    return readFile(systemFiles(), std::wstring(path), limit, bytes, tooLarge);
}

SystemError replaceFile(std::wstring_view path, std::span<const std::string_view> pieces) {
    return replaceFile(systemFiles(), std::wstring(path), pieces);
}

}  // namespace ut

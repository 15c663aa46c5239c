#include <algorithm>
#include <initializer_list>
#include <random>

#include <platen/utcore_replace.h>
#include "platform/utcore/file_system.h"
#include "platform/utcore/path.h"

namespace ut {

namespace {

/// A name beside `path` with the digits of `words`. It does not contain the name of `path`, which
/// may be as long as a name can be.
std::wstring besideNamed(const std::wstring& path, std::initializer_list<std::uint64_t> words) {
    std::wstring name = L".platen-";
    for (std::uint64_t bits : words) {
        for (int digit = 0; digit < 16; ++digit, bits >>= 4) {
            name += L"0123456789abcdef"[bits & 0xF];
        }
    }
    return path.substr(0, lastComponent(path)) + name;
}

/// The name that everybody takes who replaces `path`: they wait for each other, and each removes
/// what one that was killed has left.
std::wstring commonBeside(const std::wstring& path) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const wchar_t character : std::wstring_view(path).substr(lastComponent(path))) {
        hash = (hash ^ static_cast<std::uint32_t>(toLower(character))) * 0x100000001b3;
    }
    return besideNamed(path, {hash});
}

/// A name that nobody can guess and take first.
std::wstring randomBeside(const std::wstring& path) {
    std::random_device source;
    std::seed_seq seed{source(), source(), source(), source()};
    std::mt19937_64 random(seed);
    return besideNamed(path, {random(), random()});
}

/// The new content until it has the name of the old one. Goes with the object unless it got there.
class Temporary {
public:
    Temporary(FileSystem& files, const Destination& destination)
        : files_(files), path_(commonBeside(destination.path)) {
        for (int rounds = 0;; ++rounds) {
            error_ = files.create(path_, destination.exists, file_, held_);
            if (error_.code != files.taken().code) {
                return;
            }
            const Left left = files.removeAbandoned(path_);
            if (left == Left::Unknown) {
                path_ = randomBeside(destination.path);
                error_ = files.create(path_, destination.exists, file_, held_);
                return;
            }
            if (left == Left::InUse) {
                if (rounds == mostRounds) {
                    return;
                }
                files.pause();
            }
        }
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        if (!error_) {
            files_.discard(path_, held_);
        }
    }

    /// Why there is none.
    const SystemError& error() const { return error_; }
    FileSystem::File file() const { return file_; }

    SystemError rename(const std::wstring& destination) {
        const SystemError error = files_.rename(path_, destination);
        if (!error) {
            files_.release(held_);
            error_ = files_.taken();
        }
        return error;
    }

private:
    /// With the pauses of the systems this is ten seconds.
    static constexpr int mostRounds = 1000;

    FileSystem& files_;
    std::wstring path_;
    FileSystem::File file_{};
    FileSystem::File held_{};
    SystemError error_;
};

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
                        std::span<const std::string_view> pieces,
                        const std::function<bool()>& mayReplace, bool& refused) {
    refused = false;
    Destination destination;
    if (const SystemError error = files.findDestination(path, destination)) {
        return error;
    }
    if (destination.isDevice) {
        refused = mayReplace && !mayReplace();
        return refused ? SystemError{} : writeDevice(files, destination.path, pieces);
    }
    {
        Temporary temporary(files, destination);
        if (temporary.error()) {
            return temporary.error();
        }
        if (const SystemError error = fill(files, temporary.file(), destination, pieces)) {
            return error;
        }
        refused = mayReplace && !mayReplace();
        if (refused) {
            return {};
        }
        if (const SystemError error = temporary.rename(destination.path)) {
            return error;
        }
    }
    files.flushFolder(destination.path);
    return {};
}

void removeAbandoned(std::wstring_view path) {
    Destination destination;
    FileSystem& files = systemFiles();
    if (!files.findDestination(std::wstring(path), destination) && !destination.isDevice) {
        static_cast<void>(files.removeAbandoned(commonBeside(destination.path)));
    }
}

SystemError readFile(std::wstring_view path, std::uint64_t limit, ByteBuffer& bytes,
                     bool& tooLarge) {
    return readFile(systemFiles(), std::wstring(path), limit, bytes, tooLarge);
}

SystemError replaceFile(std::wstring_view path, std::span<const std::string_view> pieces) {
    bool refused = false;
    return replaceFile(path, pieces, {}, refused);
}

SystemError replaceFile(std::wstring_view path, std::span<const std::string_view> pieces,
                        const std::function<bool()>& mayReplace, bool& refused) {
    return replaceFile(systemFiles(), std::wstring(path), pieces, mayReplace, refused);
}

}  // namespace ut

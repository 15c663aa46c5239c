#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <wx/cmdline.h>
#include <wx/utils.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include <platen/gui_os.h>
#include <platen/utcore.h>

namespace wut {

namespace {

class Descriptor {
public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (isOpen()) {
            ::close(descriptor_);
        }
    }
    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

private:
    int descriptor_;
};

/// How a program is to be started.
class Start {
public:
    Start() {
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawn_file_actions_init(&actions_);
        // A group of its own, for it to be ended with all that it starts.
        ::posix_spawnattr_setpgroup(&attributes_, 0);
        // Signals as a shell would give them, whatever the caller does with its own.
        sigset_t signals;
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        for (const int signal : {SIGINT, SIGQUIT, SIGPIPE, SIGCHLD, SIGHUP, SIGTERM}) {
            sigaddset(&signals, signal);
        }
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        ::posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        // A group in the background would be stopped when it reads from the terminal.
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;
    ~Start() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    /// 0 or the error's number.
    int operator()(char* const* arguments, pid_t& process) const {
        return ::posix_spawnp(&process, arguments[0], &actions_, &attributes_, arguments, environ);
    }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
};

std::vector<std::string> wordsOf(const wchar_t* commandLine) {
    std::vector<std::string> words;
    if (commandLine != nullptr) {
        for (const wxString& word :
             wxCmdLineParser::ConvertStringToArgs(commandLine, wxCMD_LINE_SPLIT_UNIX)) {
            words.push_back(ut::encodePath(word.ToStdWstring()));
        }
    }
    return words;
}

/// Waits for a program that has ended or is about to, so that nothing of it stays.
void reap(pid_t process) {
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void terminate(pid_t process) {
    ::kill(-process, SIGKILL);
    reap(process);
}

/// True when the program has ended within 500 ms.
bool endsSoon(const Descriptor& process) {
    pollfd watched{process.get(), POLLIN, 0};
    // A signal cuts the slice short, which is as good.
    return ::poll(&watched, 1, 500) > 0;
}

}  // namespace

unsigned long OsShell::executeCommand(const wchar_t*, const wchar_t* commandLine, int) {
    std::vector<std::string> words = wordsOf(commandLine);
    if (words.empty()) {
        return ENOENT;
    }
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    pid_t process = 0;
    if (const int error = Start()(arguments.data(), process); error != 0) {
        return static_cast<unsigned long>(error);
    }
    // The header of the function is no C++ in every C library.
    const Descriptor watched(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (!watched.isOpen()) {
        // A program that cannot be waited for could not be cancelled either.
        const unsigned long error = ut::sysErrorCode();
        terminate(process);
        return error;
    }
    while (!isCancelled()) {
        if (endsSoon(watched)) {
            reap(process);
            return 0;
        }
    }
    terminate(process);
    return 0;
}

bool LaunchDefaultApplication(const OdString& document) {
    return wxLaunchDefaultApplication(document.text());
}

bool isUnderWine() { return false; }

}  // namespace wut

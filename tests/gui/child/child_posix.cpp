#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>
#include <sstream>

#include "tests/gui/child/child.h"

unsigned long ownProcessId() { return static_cast<unsigned long>(::getpid()); }

std::string howStarted() {
    std::set<std::string> open;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        // The folder that is being read is its own.
        if (!std::filesystem::read_symlink(entry, gone).string().ends_with("/fd")) {
            open.insert(entry.path().filename().string());
        }
    }
    std::ostringstream text;
    text << "open:";
    for (const std::string& descriptor : open) {
        text << ' ' << descriptor;
    }
    char byte = 0;
    struct sigaction pipe {};
    ::sigaction(SIGPIPE, nullptr, &pipe);
    sigset_t blocked;
    ::sigprocmask(SIG_SETMASK, nullptr, &blocked);
    text << "\ninput: " << std::filesystem::read_symlink("/proc/self/fd/0").string()
         << ", at its end: " << (::read(STDIN_FILENO, &byte, 1) == 0)
         << ", for reading alone: " << ((::fcntl(STDIN_FILENO, F_GETFL) & O_ACCMODE) == O_RDONLY)
         << "\ngroup of its own: " << (::getpgrp() == ::getpid()) << "\nbroken pipes end it: "
         << (pipe.sa_handler == SIG_DFL && sigismember(&blocked, SIGPIPE) == 0) << '\n';
    return text.str();
}

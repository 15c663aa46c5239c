#include <fcntl.h>
#include <malloc.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

#include "tests/world/world.h"

namespace world {

Process::Process(const std::string& program, std::span<const std::string> arguments) {
    std::vector<std::string> all{program};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> list;
    for (std::string& argument : all) {
        list.push_back(argument.data());
    }
    list.push_back(nullptr);
    const pid_t process = ::fork();
    require(process >= 0, "no process can be started");
    if (process == 0) {
        ::execv(program.c_str(), list.data());
        ::_exit(127);
    }
    process_ = process;
}

Process::~Process() { kill(); }

void Process::kill() {
    if (process_ != 0) {
        ::kill(static_cast<pid_t>(process_), SIGKILL);
        static_cast<void>(wait());
    }
}

int Process::wait() {
    int status = 0;
    while (::waitpid(static_cast<pid_t>(process_), &status, 0) < 0 && errno == EINTR) {
    }
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string ownProgram() { return fs::read_symlink("/proc/self/exe").string(); }

Resources resourcesNow() {
    Resources now;
    // Without the pages of files: how many of a program's own are mapped is the system's matter.
    std::size_t all = 0;
    std::size_t resident = 0;
    std::size_t ofFiles = 0;
    std::ifstream("/proc/self/statm") >> all >> resident >> ofFiles;
    now.residentBytes = (resident - ofFiles) * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    now.heapBytes = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
    now.handles = static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
    return now;
}

void waitMicroseconds(std::uint64_t microseconds) {
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
}

}  // namespace world

#include <unistd.h>

#include <fstream>
#include <iterator>

#include "tests/support/processes.h"

namespace {

namespace fs = std::filesystem;

struct Process {
    char state = 'X';
    unsigned long parent = 0;
};

/// Of a process that is gone, a dead one.
Process processAt(const fs::path& folder) {
    std::ifstream file(folder / "stat");
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    Process process;
    // The name may hold anything, but what follows it does not hold a parenthesis.
    const std::size_t end = text.rfind(')');
    if (end != std::string::npos) {
        process.state = text[end + 2];
        process.parent = std::stoul(text.substr(end + 4));
    }
    return process;
}

}  // namespace

std::size_t childCount() {
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        count += name.find_first_not_of("0123456789") == std::string::npos &&
                 processAt(entry.path()).parent == static_cast<unsigned long>(::getpid());
    }
    return count;
}

bool isRunning(unsigned long process) {
    const char state = processAt(fs::path("/proc") / std::to_string(process)).state;
    return state != 'X' && state != 'Z';
}

std::size_t openHandleCount() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

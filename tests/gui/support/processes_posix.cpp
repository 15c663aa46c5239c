#include <unistd.h>

#include <algorithm>
#include <iterator>

#include "tests/gui/support/processes.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

std::size_t childCount() {
    // The tests start programs on their first thread only.
    const std::string thread = std::to_string(::getpid());
    const std::string children = readBytes(fs::path("/proc/self/task") / thread / "children");
    return static_cast<std::size_t>(std::ranges::count(children, ' '));
}

bool isRunning(unsigned long process) {
    const std::string text = readBytes(fs::path("/proc") / std::to_string(process) / "stat");
    // The name may hold anything, but what follows it, the state, does not hold a parenthesis.
    const std::size_t end = text.rfind(')');
    return end != std::string::npos && text[end + 2] != 'X' && text[end + 2] != 'Z';
}

std::size_t openHandleCount() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

#include "tools/platen/files/browser.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <platen/utcore.h>

namespace cli::files {

std::wstring folderOfProgram() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::wstring() : ut::decodePath(program.parent_path().native());
}

std::wstring newTemporaryFolder() {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::string name = parent / "platen-XXXXXX";
    return error || ::mkdtemp(name.data()) == nullptr ? std::wstring() : ut::decodePath(name);
}

bool openInBrowser(const std::wstring& file) {
    std::string program = "xdg-open";
    std::string path = ut::encodePath(file);
    char* const arguments[] = {program.data(), path.data(), nullptr};
    posix_spawn_file_actions_t actions{};
    ::posix_spawn_file_actions_init(&actions);
    // What browsers have to say is not this program's output.
    for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_WRONLY, 0);
    }
    pid_t process = 0;
    const int fault =
        ::posix_spawnp(&process, program.c_str(), &actions, nullptr, arguments, environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return fault == 0;
}

}  // namespace cli::files

#include "tests/gui/support/processes.h"

#include <wx/stdpaths.h>

std::filesystem::path childProgram() {
    // Beside the test program, and called like it: with ".exe" where that has it.
    const std::filesystem::path own = wxStandardPaths::Get().GetExecutablePath().ToStdWstring();
    return (own.parent_path() / "platen_test_child").replace_extension(own.extension());
}

std::wstring childCommand(const std::vector<std::string>& arguments) {
    std::wstring command = L'"' + childProgram().wstring() + L'"';
    for (const std::string& argument : arguments) {
        command += L" \"" + std::filesystem::path(argument).wstring() + L'"';
    }
    return command;
}

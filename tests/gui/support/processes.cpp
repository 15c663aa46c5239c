#include "tests/gui/support/processes.h"

#include <wx/stdpaths.h>

std::filesystem::path childProgram() {
    // Beside the test program, and called like it: with ".exe" where that has it.
    const std::filesystem::path own = wxStandardPaths::Get().GetExecutablePath().utf8_string();
    return (own.parent_path() / "platen_test_child").replace_extension(own.extension());
}

std::wstring childCommand(const std::vector<std::string>& arguments) {
    std::wstring command = L'"' + childProgram().wstring() + L'"';
    for (const std::string& argument : arguments) {
        command += L" \"" + std::wstring(argument.begin(), argument.end()) + L'"';
    }
    return command;
}

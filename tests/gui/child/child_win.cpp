#include <windows.h>

#include <string>

#include "tests/gui/child/child.h"

unsigned long ownProcessId() { return GetCurrentProcessId(); }

void startProgram(const std::string& program, const std::string& first, const std::string& second) {
    std::string command = '"' + program + "\" " + first + " \"" + second + '"';
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &started) != FALSE) {
        CloseHandle(started.hProcess);
        CloseHandle(started.hThread);
    }
}

std::string howStarted() {
    STARTUPINFOA startup{};
    GetStartupInfoA(&startup);
    const int show = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : -1;
    return "title: " + std::string(startup.lpTitle) + "\nshow: " + std::to_string(show) +
           "\npriority: " + std::to_string(GetPriorityClass(GetCurrentProcess())) + '\n';
}

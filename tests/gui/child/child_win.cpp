#include <windows.h>

#include <string>

#include "tests/gui/child/child.h"

unsigned long ownProcessId() { return GetCurrentProcessId(); }

std::string howStarted() {
    STARTUPINFOA startup{};
    GetStartupInfoA(&startup);
    const int show = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : -1;
    return "title: " + std::string(startup.lpTitle) + "\nshow: " + std::to_string(show) +
           "\npriority: " + std::to_string(GetPriorityClass(GetCurrentProcess())) + '\n';
}

#include <windows.h>
// Needs windows.h.
#include <tlhelp32.h>

#include "tests/gui/support/processes.h"

std::size_t childCount() {
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W process{};
    process.dwSize = sizeof(process);
    std::size_t count = 0;
    for (BOOL more = Process32FirstW(snapshot, &process); more != FALSE;
         more = Process32NextW(snapshot, &process)) {
        count += process.th32ParentProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    CloseHandle(snapshot);
    return count;
}

bool isRunning(unsigned long process) {
    HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (handle == nullptr) {
        return false;
    }
    const bool running = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return running;
}

std::size_t openHandleCount() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

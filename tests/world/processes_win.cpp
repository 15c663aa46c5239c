#include <windows.h>
// Needs windows.h.
#include <psapi.h>

#include <string>

#include "tests/world/world.h"

namespace world {

Process::Process(const std::string& program, std::span<const std::string> arguments) {
    std::string line = '"' + program + '"';
    for (const std::string& argument : arguments) {
        line += " \"" + argument + '"';
    }
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    require(CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                           nullptr, &startup, &started) != FALSE,
            "no process can be started");
    CloseHandle(started.hThread);
    process_ = reinterpret_cast<std::intptr_t>(started.hProcess);
}

Process::~Process() { kill(); }

void Process::kill() {
    if (process_ != 0) {
        TerminateProcess(reinterpret_cast<HANDLE>(process_), 137);
        static_cast<void>(wait());
    }
}

int Process::wait() {
    const HANDLE process = reinterpret_cast<HANDLE>(process_);
    DWORD code = 0;
    WaitForSingleObject(process, INFINITE);
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    process_ = 0;
    return static_cast<int>(code);
}

std::string ownProgram() {
    std::string path(32768, '\0');
    path.resize(GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

Resources resourcesNow() {
    PROCESS_MEMORY_COUNTERS_EX memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                         sizeof(memory));
    Resources now;
    now.residentBytes = memory.WorkingSetSize;
    PROCESS_HEAP_ENTRY entry{};
    const HANDLE heap = GetProcessHeap();
    HeapLock(heap);
    while (HeapWalk(heap, &entry) != FALSE) {
        now.heapBytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    HeapUnlock(heap);
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    now.handles = count;
    return now;
}

void waitMicroseconds(std::uint64_t microseconds) {
    Sleep(static_cast<DWORD>(microseconds / 1000));
}

}  // namespace world

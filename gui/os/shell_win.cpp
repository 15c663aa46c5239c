#include <platen/gui_os.h>
// Behind the header, which brings windows.h as wxWidgets wants it.
#include <shellapi.h>

#include <memory>
#include <string>

namespace wut {

namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

WORD showMode(int flags) {
    if ((flags & 2) != 0) {
        return SW_MINIMIZE;
    }
    return (flags & 4) != 0 ? SW_HIDE : SW_SHOWDEFAULT;
}

/// A job for a program and all that it starts. Closing it ends nothing, and a program that wants to
/// leave it may.
Handle newJob() {
    Handle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_BREAKAWAY_OK;
    if (job) {
        SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits,
                                sizeof(limits));
    }
    return job;
}

std::wstring copyOf(const wchar_t* text) { return text != nullptr ? text : L""; }

}  // namespace

unsigned long OsShell::executeCommand(const wchar_t* title, const wchar_t* commandLine, int flags) {
    constexpr DWORD slice = 500;
    std::wstring titleCopy = copyOf(title);
    std::wstring command = copyOf(commandLine);
    const Handle job = newJob();

    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.lpTitle = title != nullptr ? titleCopy.data() : nullptr;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = showMode(flags);
    PROCESS_INFORMATION started{};
    // It begins suspended: what it starts before it is in the job would not be.
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE,
                       NORMAL_PRIORITY_CLASS | CREATE_SUSPENDED, nullptr, nullptr, &startup,
                       &started) == FALSE) {
        return ut::sysErrorCode();
    }
    const Handle process(started.hProcess);
    const Handle thread(started.hThread);
    if (job) {
        AssignProcessToJobObject(job.get(), process.get());
    }
    ResumeThread(thread.get());

    const Handle waitable(OpenProcess(SYNCHRONIZE, FALSE, started.dwProcessId));
    if (!waitable) {
        return 0;
    }
    while (!isCancelled()) {
        if (WaitForSingleObject(waitable.get(), slice) != WAIT_TIMEOUT) {
            return 0;
        }
    }
    TerminateProcess(process.get(), 0);
    if (job) {
        TerminateJobObject(job.get(), 0);
    }
    return 0;
}

bool LaunchDefaultApplication(const OdString& document) {
    return ShellExecuteW(nullptr, L"open", document.c_str(), nullptr, nullptr, SW_SHOWNORMAL) !=
           nullptr;
}

bool isUnderWine() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Wine\\Wine\\Config", 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

}  // namespace wut

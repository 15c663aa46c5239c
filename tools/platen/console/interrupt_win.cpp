#include <windows.h>

#include <atomic>

#include "tools/platen/console/interrupt.h"

namespace cli::console {
namespace {

std::atomic<bool> noted = false;

BOOL WINAPI note(DWORD event) {
    const bool first =
        event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT ? !noted.exchange(true) : false;
    return first ? TRUE : FALSE;
}

}  // namespace

void catchInterrupts() { SetConsoleCtrlHandler(note, TRUE); }

bool interrupted() { return noted; }

}  // namespace cli::console

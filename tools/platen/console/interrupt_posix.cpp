#include <unistd.h>

#include <csignal>
#include <initializer_list>

#include "tools/platen/console/exit_code.h"
#include "tools/platen/console/interrupt.h"

namespace cli::console {
namespace {

volatile std::sig_atomic_t noted = 0;

/// Whatever waits for a folder that does not answer, or for the other end of a pipe, goes on
/// waiting.
constexpr unsigned patience = 5;

void note(int) {
    noted = 1;
    alarm(patience);
}

void giveUp(int) { _exit(static_cast<int>(ExitCode::Interrupted)); }

}  // namespace

void catchInterrupts() {
    struct sigaction action {};
    action.sa_handler = note;
    // The second one does what it always did. Reads and writes go on.
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM}) {
        sigaction(signal, &action, nullptr);
    }
    action.sa_handler = giveUp;
    sigaction(SIGALRM, &action, nullptr);
}

bool interrupted() { return noted != 0; }

}  // namespace cli::console

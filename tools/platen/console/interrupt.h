/// Stopping between two files when the person at the keyboard wants to.
#pragma once

namespace cli::console {

/// From now on an interrupt (Ctrl+C, on POSIX also SIGTERM) is noted for `interrupted`; the next
/// one ends the program at once, and so do, on POSIX, five seconds in which it did not end. For a
/// program's main alone.
void catchInterrupts();

/// An interrupt came: what is being done is finished, nothing more is begun.
bool interrupted();

}  // namespace cli::console

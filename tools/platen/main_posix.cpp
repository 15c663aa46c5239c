#include <unistd.h>

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "tools/platen/command.h"
#include "tools/platen/console/interrupt.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    cli::console::catchInterrupts();
    // A file beyond the largest size that the shell allows is an error like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    return cli::run(arguments, {std::cout, std::cerr, std::cin, isatty(STDOUT_FILENO) == 1,
                                isatty(STDERR_FILENO) == 1});
}

#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "tools/platen/command.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return cli::run(arguments, std::cout, std::cerr, isatty(STDOUT_FILENO) == 1);
}

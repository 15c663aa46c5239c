#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/command.h"
#include "tools/platen/console/interrupt.h"

namespace {

/// The console shows UTF-8 while the command runs and what it showed before afterwards: the setting
/// belongs to the console, not to the process.
class Utf8Console {
public:
    Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    ~Utf8Console() { SetConsoleOutputCP(before_); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    UINT before_;
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const Utf8Console utf8;
    // Data comes and goes byte for byte: no carriage returns of the runtime's making.
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> arguments;
    for (int index = 1; index < argc; ++index) {
        arguments.push_back(ut::encodePath(argv[index]));
    }
    cli::console::catchInterrupts();
    return cli::run(arguments, {std::cout, std::cerr, std::cin, _isatty(_fileno(stdout)) != 0,
                                _isatty(_fileno(stderr)) != 0});
}

#include <CLI/CLI.hpp>
#include <memory>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/printers/printing.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Name, driver, port, number of papers and comment of each, and which is the default.

Examples:
  platen printers
  platen printers --json                one JSON object a line, schema platen.printers/1)";

struct PrintersOptions {
    bool json = false;
};

/// Lists the installed printers.
ExitCode run(const PrintersOptions& options, const Console& console) {
    return printers::listPrinters(options.json, console);
}

}  // namespace

CommandEntry addPrinters(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "printers", "List the installed printers (Windows)", help);
    const auto options = std::make_shared<PrintersOptions>();
    command->add_flag("--json", options->json, "One JSON object a line");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

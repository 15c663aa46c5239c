#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/printers/printing.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(A device mode holds the settings of a printer's driver. That of a configuration is what
its printer, which has to be installed, makes of its settings.

Examples:
  platen devmode Plotter                a line for each field, then the driver's private bytes
  platen devmode office.pc3
  platen devmode Plotter --json         one JSON object, schema platen.devmode/1)";

struct DevmodeOptions {
    /// A printer, or a configuration when it ends in ".pc3".
    std::string source;
    bool json = false;
};

/// Printers may have any name; files of other names are not taken for configurations.
bool namesConfiguration(std::string_view source) {
    constexpr std::string_view extension = ".pc3";
    return source.size() >= extension.size() &&
           std::equal(extension.begin(), extension.end(), source.end() - extension.size(),
                      [](char expected, char given) {
                          return given == expected ||
                                 (given >= 'A' && given <= 'Z' && given - 'A' + 'a' == expected);
                      });
}

/// Prints the device mode of a printer or of a configuration.
ExitCode run(const DevmodeOptions& options, const Console& console) {
    return namesConfiguration(options.source)
               ? printers::showDevModeOfConfiguration(options.source, options.json, console)
               : printers::showDevMode(options.source, options.json, console);
}

}  // namespace

CommandEntry addDevmode(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "devmode", "Print the device mode of a printer or of a configuration (Windows)",
        help);
    const auto options = std::make_shared<DevmodeOptions>();
    arguments::takeText(command->add_option("SOURCE", options->source,
                                            "Printer, or a configuration whose name ends in .pc3"))
        ->required();
    command->add_flag("--json", options->json, "The fields as one JSON object");
    return entryOf(command, options, run);
}

}  // namespace cli::commands

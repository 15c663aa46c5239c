#include <CLI/CLI.hpp>
#include <memory>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/command_entry.h"
#include "tools/platen/commands.h"
#include "tools/platen/help_text.h"

namespace platen {

CommandEntry addPrinters(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "printers", "List the installed printers (Windows)", help::printers);
    const auto options = std::make_shared<PrintersOptions>();
    command->add_flag("--json", options->json, "One JSON object a line");
    return entryOf(command, options, printers);
}

CommandEntry addDevmode(CLI::App& program) {
    CLI::App* command = addCommand(
        program, "devmode", "Print the device mode of a printer or of a configuration (Windows)",
        help::devmode);
    const auto options = std::make_shared<DevmodeOptions>();
    takeText(command->add_option("SOURCE", options->source,
                                 "Printer, or a configuration whose name ends in .pc3"))
        ->required();
    command->add_flag("--json", options->json, "The fields as one JSON object");
    return entryOf(command, options, devmode);
}

}  // namespace platen

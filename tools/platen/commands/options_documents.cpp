#include <CLI/CLI.hpp>
#include <memory>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/command_entry.h"
#include "tools/platen/commands.h"
#include "tools/platen/help_text.h"

namespace platen {

CommandEntry addInfo(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "info", "Say what files are and what they hold", help::info);
    const auto options = std::make_shared<InfoOptions>();
    takeText(command->add_option("FILE", options->files, "Files"))->required();
    command->add_flag("--json", options->json, "One JSON object a line");
    addMaxBody(command, options->maxBody);
    return entryOf(command, options, info);
}

CommandEntry addGet(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "get", "Print items of a file as they are stored", help::get);
    const auto options = std::make_shared<GetOptions>();
    takeText(command->add_option("FILE", options->file, "File"))->required();
    takeText(command->add_option("PATH", options->paths, "Items; all of them when left out"));
    command->add_flag("--json", options->json, "Print JSON bodies");
    addMaxBody(command, options->maxBody);
    return entryOf(command, options, get);
}

CommandEntry addCheck(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "check", "Verify files and list every finding", help::check);
    const auto options = std::make_shared<CheckOptions>();
    takeText(command->add_option("FILE", options->files, "Files"))->required();
    command->add_flag("--json", options->json, "One JSON object a line");
    command->add_flag("--printers", options->printers,
                      "Ask the printers of configurations, too (Windows)");
    addMaxBody(command, options->maxBody);
    return entryOf(command, options, check);
}

CommandEntry addConvert(CLI::App& program) {
    CLI::App* command = addCommand(
        program, "convert", "Write a file as another kind or in another form", help::convert);
    const auto options = std::make_shared<ConvertOptions>();
    takeText(command->add_option("IN", options->in, "File to read"))->required();
    addOutput(command, options->out)->required();
    command->add_option("--to", options->to, "What to write; by default as OUT ends")
        ->check(CLI::IsMember({"ctb", "stb", "pc3", "pmp", "json", "text"}));
    takeText(command->add_option("--prefix", options->prefix,
                                 "Beginning of the names of styles made from colours (Style)"));
    addMaxBody(command, options->maxBody);
    return entryOf(command, options, convert);
}

}  // namespace platen

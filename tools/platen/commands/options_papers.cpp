#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/command_entry.h"
#include "tools/platen/commands.h"
#include "tools/platen/help_text.h"

namespace platen {

CommandEntry addPapers(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "papers",
                   "List papers of a device, of a printer, of a file or of Windows", help::papers);
    const auto options = std::make_shared<PapersOptions>();
    takeText(command->add_option("FILE", options->file,
                                 "Configuration or parameters whose custom papers to list"));
    command->add_option("--device", options->device, "Papers of the built-in devices")
        ->check(CLI::IsMember({"pdf", "image", "none"}));
    takeText(command->add_option("--printer", options->printer,
                                 "Papers of an installed printer (Windows)"))
        ->type_name("NAME");
    command->add_flag("--catalogue", options->catalogue, "Windows papers by their ids");
    command->add_flag("--json", options->json, "One JSON object a line");
    return entryOf(command, options, papers);
}

namespace {

using SharedOptions = std::shared_ptr<PaperOptions>;

CLI::App* addAction(CLI::App* command, const SharedOptions& options, PaperAction action,
                    const char* word, const char* purpose, const char* nameHelp) {
    CLI::App* added = command->add_subcommand(word, purpose);
    added->group("Actions")->footer(help::paper);
    takeText(added->add_option("FILE", options->file, "Configuration or parameters"))->required();
    takeText(added->add_option("--name", options->name, nameHelp))->type_name("NAME")->required();
    added->parse_complete_callback([options, action] { options->action = action; });
    return added;
}

void addLengths(CLI::App* action, const SharedOptions& options) {
    action->add_option("--size", options->size, "Width and height")->type_name("WxH")->required();
    action
        ->add_option("--units", options->units,
                     "Of size and margins: mm, in or px (a new paper: mm, or px for images; "
                     "an old one: its own)")
        ->check(CLI::IsMember({"mm", "in", "px"}));
    action->add_option("--margins", options->margins, "Left, bottom, right, top")
        ->type_name("L,B,R,T");
}

}  // namespace

CommandEntry addPaper(CLI::App& program) {
    CLI::App* command = addCommand(
        program, "paper", "Edit custom papers of a configuration or its parameters", help::paper);
    const auto options = std::make_shared<PaperOptions>();
    command->require_subcommand(1);
    const auto add = [&](PaperAction action, const char* word, const char* purpose,
                         const char* nameHelp) {
        return addAction(command, options, action, word, purpose, nameHelp);
    };
    addLengths(add(PaperAction::Add, "add", "Add a paper", "Name of the new paper"), options);
    add(PaperAction::Remove, "remove", "Remove a paper", "Name of the paper");
    takeText(add(PaperAction::Rename, "rename", "Rename a paper", "Name of the paper")
                 ->add_option("--to", options->newName, "New name"))
        ->type_name("NAME")
        ->required();
    addLengths(
        add(PaperAction::Resize, "resize", "Change the size of a paper", "Name of the paper"),
        options);
    return entryOf(command, options, paper);
}

}  // namespace platen

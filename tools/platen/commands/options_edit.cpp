#include <CLI/CLI.hpp>
#include <memory>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/command_entry.h"
#include "tools/platen/commands.h"
#include "tools/platen/help_text.h"

namespace platen {

CommandEntry addCreate(CLI::App& program) {
    CLI::App* command = addCommand(program, "create", "Make a fresh document", help::create);
    const auto options = std::make_shared<CreateOptions>();
    command
        ->add_option("KIND", options->kind,
                     "Colour-dependent (ctb) or named (stb) plot styles, a plot configuration "
                     "(pc3), plot model parameters (pmp)")
        ->required()
        ->check(CLI::IsMember({"ctb", "stb", "pc3", "pmp"}));
    addOutput(command, options->out)->required();
    takeText(command->add_option("--description", options->description, "Description of a table"));
    takeText(command->add_option("--device", options->device,
                                 "Device of a configuration, such as \"Print As PDF\""))
        ->type_name("NAME");
    takeText(command->add_option("--printer", options->printer,
                                 "Printer of a configuration, instead of a device (Windows)"))
        ->type_name("NAME");
    takeText(command->add_option("--paper", options->paper,
                                 "Paper of a configuration; the device's first by default"))
        ->type_name("NAME");
    takeText(
        command->add_option("--from", options->from, "Configuration that parameters are made for"))
        ->type_name("PC3");
    return entryOf(command, options, create);
}

CommandEntry addSet(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "set", "Change items of a file as they are stored", help::set);
    const auto options = std::make_shared<SetOptions>();
    takeText(command->add_option("FILE", options->file, "File"))->required();
    takeText(command->add_option("PATH=VALUE", options->assignments,
                                 "Values; a new item is PATH:TYPE=VALUE or PATH:block"));
    takeText(command->add_option("--delete", options->deleted,
                                 "Item to delete before values are set; may be repeated"))
        ->type_name("PATH")
        ->allow_extra_args(false);
    addOutput(command, options->out);
    addMaxBody(command, options->maxBody);
    // A flag whose value can only follow "=", so that it takes no argument for its own.
    const CLI::Option* inPlace =
        command->add_flag("--in-place", options->backupSuffix,
                          "Change FILE itself; --in-place=SUFFIX keeps the old file under "
                          "its name and SUFFIX");
    command->parse_complete_callback([options, inPlace] {
        constexpr const char* flagWithoutValue = "true";
        options->inPlace = inPlace->count() > 0;
        if (options->backupSuffix == flagWithoutValue) {
            options->backupSuffix.clear();
        }
    });
    return entryOf(command, options, set);
}

CommandEntry addMigrate(CLI::App& program) {
    CLI::App* command =
        addCommand(program, "migrate", "Move configurations to other printers", help::migrate);
    const auto options = std::make_shared<MigrateOptions>();
    takeText(
        command->add_option("DIR", options->folder, "Folder; the folders in it are searched, too"))
        ->required();
    takeText(command->add_option("--map", options->maps, "Old and new printer; may be repeated"))
        ->type_name("OLD=NEW")
        ->required();
    command->add_flag("--dry-run", options->dryRun, "Say what would change");
    command->add_flag("--names-only", options->namesOnly,
                      "Do not ask printers; their drivers stay as they are (always so where "
                      "printers cannot be asked)");
    return entryOf(command, options, migrate);
}

}  // namespace platen

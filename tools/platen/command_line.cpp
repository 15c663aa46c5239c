#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "tools/platen/command.h"
#include "tools/platen/commands.h"
#include "tools/platen/help_text.h"

namespace platen {
namespace {

/// The parser reads an argument in brackets as a list. A mark before it keeps it one argument.
constexpr char mark = '\x01';

std::string marked(const std::string& argument) {
    const bool needsMark = argument.starts_with('[') || argument.starts_with(mark);
    return needsMark ? mark + argument : argument;
}

/// Takes the mark away once the parser has passed the argument on.
CLI::Option* takeText(CLI::Option* option) {
    return option->transform(CLI::Validator(
        [](std::string& argument) {
            argument.erase(0, argument.starts_with(mark) ? 1 : 0);
            return std::string();
        },
        ""));
}

/// Every command that reads files of others takes it.
void addMaxBody(CLI::App* command, std::uint64_t& bytes) {
    command
        ->add_option("--max-body", bytes,
                     "Refuse files with more content than this (256MB), such as 1GB")
        ->transform(CLI::AsSizeValue(false).description(""))
        // It would be taken for a very large number.
        ->transform(CLI::Validator(
            [](std::string& size) {
                return size.find('-') == std::string::npos ? "" : "a size cannot be negative";
            },
            ""))
        ->type_name("BYTES");
}

class CommandLine {
public:
    CommandLine() {
        app_.get_formatter()->label("SUBCOMMAND", "COMMAND");
        // A path that begins with a slash is no option.
        app_.allow_windows_style_options(false);
        app_.require_subcommand(1);
        app_.set_version_flag("--version", "platen " PLATEN_VERSION, "Print the version and exit");
        app_.footer(help::program);
        addInfo();
        addGet();
        addCheck();
        addConvert();
        addCreate();
        addSet();
        addMigrate();
        addPapers();
        addPaper();
        addPrinters();
        addDevmode();
    }

    ExitCode run(std::vector<std::string> arguments, const Console& console) {
        // The parser takes its arguments from the end.
        std::reverse(arguments.begin(), arguments.end());
        std::transform(arguments.begin(), arguments.end(), arguments.begin(), marked);
        try {
            app_.parse(std::move(arguments));
        } catch (const CLI::ParseError& error) {
            return answer(error, console);
        }
        if (*info_) {
            return info(infoOptions_, console);
        }
        if (*get_) {
            return get(getOptions_, console);
        }
        if (*check_) {
            return check(checkOptions_, console);
        }
        if (*convert_) {
            return convert(convertOptions_, console);
        }
        if (*create_) {
            return create(createOptions_, console);
        }
        if (*set_) {
            return set(setOptions_, console);
        }
        if (*migrate_) {
            return migrate(migrateOptions_, console);
        }
        if (*printers_) {
            return printers(printersOptions_, console);
        }
        if (*devmode_) {
            return devmode(devmodeOptions_, console);
        }
        return *papers_ ? papers(papersOptions_, console) : paper(paperOptions_, console);
    }

private:
    /// Asking for help or the version ends the parse like a mistake does.
    ExitCode answer(const CLI::ParseError& error, const Console& console) const {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app_.exit(error, console.out, console.err);
            return ExitCode::Ok;
        }
        std::string command = "platen";
        for (const CLI::App* app = &app_; !app->get_subcommands().empty();) {
            app = app->get_subcommands().front();
            command += ' ' + app->get_name();
        }
        return fail(console, "", std::string(error.what()) + "; see " + command + " --help");
    }

    CLI::App* add(const char* name, const char* purpose, const char* footer) {
        CLI::App* command = app_.add_subcommand(name, purpose);
        command->group("Commands")->footer(footer);
        return command;
    }

    void addInfo() {
        info_ = add("info", "Say what files are and what they hold", help::info);
        takeText(info_->add_option("FILE", infoOptions_.files, "Files"))->required();
        info_->add_flag("--json", infoOptions_.json, "One JSON object a line");
        addMaxBody(info_, infoOptions_.maxBody);
    }

    void addGet() {
        get_ = add("get", "Print items of a file as they are stored", help::get);
        takeText(get_->add_option("FILE", getOptions_.file, "File"))->required();
        takeText(get_->add_option("PATH", getOptions_.paths, "Items; all of them when left out"));
        get_->add_flag("--json", getOptions_.json, "Print JSON bodies");
        addMaxBody(get_, getOptions_.maxBody);
    }

    void addCheck() {
        check_ = add("check", "Verify files and list every finding", help::check);
        takeText(check_->add_option("FILE", checkOptions_.files, "Files"))->required();
        check_->add_flag("--json", checkOptions_.json, "One JSON object a line");
        check_->add_flag("--printers", checkOptions_.printers,
                         "Ask the printers of configurations, too (Windows)");
        addMaxBody(check_, checkOptions_.maxBody);
    }

    void addConvert() {
        convert_ = add("convert", "Write a file as another kind or in another form", help::convert);
        takeText(convert_->add_option("IN", convertOptions_.in, "File to read"))->required();
        addOutput(convert_, convertOptions_.out)->required();
        convert_->add_option("--to", convertOptions_.to, "What to write; by default as OUT ends")
            ->check(CLI::IsMember({"ctb", "stb", "pc3", "pmp", "json", "text"}));
        takeText(
            convert_->add_option("--prefix", convertOptions_.prefix,
                                 "Beginning of the names of styles made from colours (Style)"));
        addMaxBody(convert_, convertOptions_.maxBody);
    }

    void addCreate() {
        create_ = add("create", "Make a fresh document", help::create);
        create_
            ->add_option("KIND", createOptions_.kind,
                         "Colour-dependent (ctb) or named (stb) plot styles, a plot configuration "
                         "(pc3), plot model parameters (pmp)")
            ->required()
            ->check(CLI::IsMember({"ctb", "stb", "pc3", "pmp"}));
        addOutput(create_, createOptions_.out)->required();
        takeText(create_->add_option("--description", createOptions_.description,
                                     "Description of a table"));
        takeText(create_->add_option("--device", createOptions_.device,
                                     "Device of a configuration, such as \"Print As PDF\""))
            ->type_name("NAME");
        takeText(create_->add_option("--printer", createOptions_.printer,
                                     "Printer of a configuration, instead of a device (Windows)"))
            ->type_name("NAME");
        takeText(create_->add_option("--paper", createOptions_.paper,
                                     "Paper of a configuration; the device's first by default"))
            ->type_name("NAME");
        takeText(create_->add_option("--from", createOptions_.from,
                                     "Configuration that parameters are made for"))
            ->type_name("PC3");
    }

    void addSet() {
        set_ = add("set", "Change items of a file as they are stored", help::set);
        takeText(set_->add_option("FILE", setOptions_.file, "File"))->required();
        takeText(set_->add_option("PATH=VALUE", setOptions_.assignments,
                                  "Values; a new item is PATH:TYPE=VALUE or PATH:block"));
        takeText(set_->add_option("--delete", setOptions_.deleted,
                                  "Item to delete before values are set; may be repeated"))
            ->type_name("PATH")
            ->allow_extra_args(false);
        addOutput(set_, setOptions_.out);
        // A flag whose value can only follow "=", so that it takes no argument for its own.
        inPlace_ = set_->add_flag("--in-place", setOptions_.backupSuffix,
                                  "Change FILE itself; --in-place=SUFFIX keeps the old file under "
                                  "its name and SUFFIX");
        set_->parse_complete_callback([this] {
            constexpr const char* flagWithoutValue = "true";
            setOptions_.inPlace = inPlace_->count() > 0;
            if (setOptions_.backupSuffix == flagWithoutValue) {
                setOptions_.backupSuffix.clear();
            }
        });
    }

    void addMigrate() {
        migrate_ = add("migrate", "Move configurations to other printers", help::migrate);
        takeText(migrate_->add_option("DIR", migrateOptions_.folder,
                                      "Folder; the folders in it are searched, too"))
            ->required();
        takeText(migrate_->add_option("--map", migrateOptions_.maps,
                                      "Old and new printer; may be repeated"))
            ->type_name("OLD=NEW")
            ->required();
        migrate_->add_flag("--dry-run", migrateOptions_.dryRun, "Say what would change");
        migrate_->add_flag("--names-only", migrateOptions_.namesOnly,
                           "Do not ask printers; their drivers stay as they are (always so where "
                           "printers cannot be asked)");
    }

    void addPapers() {
        papers_ = add("papers", "List papers of a device, of a printer, of a file or of Windows",
                      help::papers);
        takeText(papers_->add_option("FILE", papersOptions_.file,
                                     "Configuration or parameters whose custom papers to list"));
        papers_->add_option("--device", papersOptions_.device, "Papers of the built-in devices")
            ->check(CLI::IsMember({"pdf", "image", "none"}));
        takeText(papers_->add_option("--printer", papersOptions_.printer,
                                     "Papers of an installed printer (Windows)"))
            ->type_name("NAME");
        papers_->add_flag("--catalogue", papersOptions_.catalogue, "Windows papers by their ids");
        papers_->add_flag("--json", papersOptions_.json, "One JSON object a line");
    }

    void addPrinters() {
        printers_ = add("printers", "List the installed printers (Windows)", help::printers);
        printers_->add_flag("--json", printersOptions_.json, "One JSON object a line");
    }

    void addDevmode() {
        devmode_ =
            add("devmode", "Print the device mode of a printer or of a configuration (Windows)",
                help::devmode);
        takeText(devmode_->add_option("SOURCE", devmodeOptions_.source,
                                      "Printer, or a configuration whose name ends in .pc3"))
            ->required();
        devmode_->add_flag("--json", devmodeOptions_.json, "The fields as one JSON object");
    }

    void addPaper() {
        paper_ =
            add("paper", "Edit custom papers of a configuration or its parameters", help::paper);
        paper_->require_subcommand(1);
        addLengths(addAction("add", PaperAction::Add, "Add a paper", "Name of the new paper"));
        addAction("remove", PaperAction::Remove, "Remove a paper", "Name of the paper");
        CLI::App* rename =
            addAction("rename", PaperAction::Rename, "Rename a paper", "Name of the paper");
        takeText(rename->add_option("--to", paperOptions_.newName, "New name"))
            ->type_name("NAME")
            ->required();
        addLengths(addAction("resize", PaperAction::Resize, "Change the size of a paper",
                             "Name of the paper"));
    }

    CLI::App* addAction(const char* word, PaperAction action, const char* purpose,
                        const char* nameHelp) {
        CLI::App* command = paper_->add_subcommand(word, purpose);
        command->group("Actions")->footer(help::paper);
        takeText(command->add_option("FILE", paperOptions_.file, "Configuration or parameters"))
            ->required();
        takeText(command->add_option("--name", paperOptions_.name, nameHelp))
            ->type_name("NAME")
            ->required();
        command->parse_complete_callback([this, action] { paperOptions_.action = action; });
        return command;
    }

    void addLengths(CLI::App* command) {
        command->add_option("--size", paperOptions_.size, "Width and height")
            ->type_name("WxH")
            ->required();
        command
            ->add_option("--units", paperOptions_.units,
                         "Of size and margins: mm, in or px (a new paper: mm, or px for images; "
                         "an old one: its own)")
            ->check(CLI::IsMember({"mm", "in", "px"}));
        command->add_option("--margins", paperOptions_.margins, "Left, bottom, right, top")
            ->type_name("L,B,R,T");
    }

    static CLI::Option* addOutput(CLI::App* command, std::string& out) {
        return takeText(command->add_option("-o,--output", out, "File to write"))->type_name("OUT");
    }

    CLI::App app_{"Plotter documents in a shell: plot configurations and plot style tables.",
                  "platen"};
    CLI::App* info_ = nullptr;
    CLI::App* get_ = nullptr;
    CLI::App* check_ = nullptr;
    CLI::App* convert_ = nullptr;
    CLI::App* create_ = nullptr;
    CLI::App* set_ = nullptr;
    CLI::Option* inPlace_ = nullptr;
    CLI::App* migrate_ = nullptr;
    CLI::App* papers_ = nullptr;
    CLI::App* paper_ = nullptr;
    CLI::App* printers_ = nullptr;
    CLI::App* devmode_ = nullptr;
    InfoOptions infoOptions_;
    GetOptions getOptions_;
    CheckOptions checkOptions_;
    ConvertOptions convertOptions_;
    CreateOptions createOptions_;
    SetOptions setOptions_;
    MigrateOptions migrateOptions_;
    PapersOptions papersOptions_;
    PaperOptions paperOptions_;
    PrintersOptions printersOptions_;
    DevmodeOptions devmodeOptions_;
};

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
        bool terminal) {
    const Console console{out, err, terminal};
    ExitCode code = ExitCode::Ok;
    try {
        code = CommandLine().run(arguments, console);
    } catch (const std::bad_alloc&) {
        code = fail(console, "", "there is not enough memory for this file");
    }
    out.flush();
    if (!out) {
        code = fail(console, "standard output", "not everything could be written");
    }
    return static_cast<int>(code);
}

}  // namespace platen

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
        return *convert_ ? convert(convertOptions_, console) : create(createOptions_, console);
    }

private:
    /// Asking for help or the version ends the parse like a mistake does.
    ExitCode answer(const CLI::ParseError& error, const Console& console) const {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app_.exit(error, console.out, console.err);
            return ExitCode::Ok;
        }
        return fail(console, "", std::string(error.what()) + "; see platen --help");
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
        addMaxBody(check_, checkOptions_.maxBody);
    }

    void addConvert() {
        convert_ = add("convert", "Write a file as another kind or in another form", help::convert);
        takeText(convert_->add_option("IN", convertOptions_.in, "File to read"))->required();
        takeText(convert_->add_option("-o,--output", convertOptions_.out, "File to write"))
            ->type_name("OUT")
            ->required();
        convert_->add_option("--to", convertOptions_.to, "What to write; by default as OUT ends")
            ->check(CLI::IsMember({"ctb", "stb", "pc3", "pmp", "json", "text"}));
        takeText(
            convert_->add_option("--prefix", convertOptions_.prefix,
                                 "Beginning of the names of styles made from colours (Style)"));
        addMaxBody(convert_, convertOptions_.maxBody);
    }

    void addCreate() {
        create_ = add("create", "Make a fresh plot style table", help::create);
        create_->add_option("KIND", createOptions_.kind, "Colour-dependent (ctb) or named (stb)")
            ->required()
            ->check(CLI::IsMember({"ctb", "stb"}));
        takeText(create_->add_option("-o,--output", createOptions_.out, "File to write"))
            ->type_name("OUT")
            ->required();
        takeText(create_->add_option("--description", createOptions_.description,
                                     "Description of the table"));
    }

    CLI::App app_{"Plotter documents in a shell: plot configurations and plot style tables.",
                  "platen"};
    CLI::App* info_ = nullptr;
    CLI::App* get_ = nullptr;
    CLI::App* check_ = nullptr;
    CLI::App* convert_ = nullptr;
    CLI::App* create_ = nullptr;
    InfoOptions infoOptions_;
    GetOptions getOptions_;
    CheckOptions checkOptions_;
    ConvertOptions convertOptions_;
    CreateOptions createOptions_;
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

#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/mistakes.h"
#include "tools/platen/command.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/help/completion.h"
#include "tools/platen/help/manual.h"

namespace cli {
namespace {

constexpr const char* text = R"(Examples:
  platen create ctb -o pens.ctb --description "Office plotter"
  platen info pens.ctb
  platen create pc3 --device "Print As PDF" -o office.pc3
  platen set office.pc3 media/number_of_copies=2 --in-place
  platen paper add office.pc3 --name "Long roll" --size 914x5000
  platen convert pens.ctb -o pens.stb
  platen get pens.stb plot_style/1/name
  platen check *.ctb *.stb

Exit codes: 0 done; 1 what was asked for is not there; 2 an error or wrong usage; 3 done with
warnings. Over several files the worst of 2, 3, 1, 0 counts.

Data goes to standard output, messages to standard error. Files are recognised by their content,
whatever their names. platen COMMAND --help says more.)";

class CommandLine {
public:
    CommandLine() {
        program_.get_formatter()->label("SUBCOMMAND", "COMMAND");
        // A path that begins with a slash is no option.
        program_.allow_windows_style_options(false);
        program_.require_subcommand(1);
        program_.set_version_flag("--version", "platen " PLATEN_VERSION,
                                  "Print the version and exit");
        program_.footer(text);
        addAnswer("--completion", completion_,
                  "Print what a shell needs to complete command lines, and exit")
            ->check(arguments::oneOf({"bash", "fish", "zsh"}));
        // For those who build packages.
        arguments::takeText(addAnswer("--man", manual_, "Write manual pages into a folder"))
            ->group("");
        for (const auto add : commands::list) {
            commands_.push_back(add(program_));
        }
    }

    ExitCode run(std::vector<std::string> arguments, const Console& console) {
        // The parser takes its arguments from the end.
        std::reverse(arguments.begin(), arguments.end());
        std::transform(arguments.begin(), arguments.end(), arguments.begin(), arguments::marked);
        try {
            program_.parse(std::move(arguments));
        } catch (const CLI::ParseError& error) {
            return answer(error, console);
        }
        const CLI::App* chosen = program_.get_subcommands().front();
        return std::ranges::find(commands_, chosen, &commands::CommandEntry::app)->run(console);
    }

private:
    /// An option that says something and needs no command.
    CLI::Option* addAnswer(const char* name, std::string& value, const char* purpose) {
        return program_.add_option_function<std::string>(
            name,
            [&value](const std::string& given) {
                value = given;
                throw CLI::Success();
            },
            purpose);
    }

    /// Asking for help or the version ends the parse like a mistake does.
    ExitCode answer(const CLI::ParseError& error, const Console& console) const {
        if (!manual_.empty()) {
            return writeManual(console);
        }
        if (!completion_.empty()) {
            const help::Command program = help::outlineOf(program_);
            console.out << (completion_ == "bash"   ? help::bashCompletion(program)
                            : completion_ == "fish" ? help::fishCompletion(program)
                                                    : help::zshCompletion(program));
            return ExitCode::Ok;
        }
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            program_.exit(error, console.out, console.err);
            return ExitCode::Ok;
        }
        return fail(console, "", arguments::mistakeOf(program_, error));
    }

    ExitCode writeManual(const Console& console) const {
        for (const help::Page& page : help::manualOf(help::outlineOf(program_))) {
            const std::string file = manual_ + '/' + page.file;
            const std::string_view pieces[] = {page.text};
            if (const ut::SystemError error = ut::replaceFile(ut::decodePath(file), pieces)) {
                return fail(console, file, error.message());
            }
        }
        return ExitCode::Ok;
    }

    CLI::App program_{"Plotter documents in a shell: plot configurations and plot style tables.",
                      "platen"};
    std::vector<commands::CommandEntry> commands_;
    /// A shell; empty unless its completion was asked for.
    std::string completion_;
    /// The folder for manual pages, if any.
    std::string manual_;
};

}  // namespace

int run(const std::vector<std::string>& arguments, const Console& console) {
    ExitCode code = ExitCode::Ok;
    try {
        code = CommandLine().run(arguments, console);
    } catch (const std::bad_alloc&) {
        code = fail(console, "", "there is not enough memory for this file");
    }
    console.out.flush();
    if (!console.out) {
        code = fail(console, "standard output", "not everything could be written");
    }
    return static_cast<int>(code);
}

}  // namespace cli

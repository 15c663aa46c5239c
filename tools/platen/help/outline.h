/// The command line as plain data, as far as manual pages and completions speak of it.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli::help {

/// An option, or an operand when it has no names.
struct Option {
    /// What a shell offers for the value.
    enum class Values { None, Anything, Words, Files, Folders };

    /// "-o", "--output"
    std::vector<std::string> names;
    /// "OUT"; empty for an option without a value.
    std::string value;
    std::string purpose;
    Values values = Values::None;
    /// What the value is one of.
    std::vector<std::string> words;
    bool required = false;
    bool repeated = false;
};

struct Command {
    /// "style"; "platen" for the program.
    std::string name;
    std::string purpose;
    /// The text below the options.
    std::string text;
    std::vector<Option> options;
    std::vector<Option> operands;
    std::vector<Command> commands;
};

/// What `--help` shows of `app` and what is below it. Hidden options are left out.
Command outlineOf(const CLI::App& app);

}  // namespace cli::help

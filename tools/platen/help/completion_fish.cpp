#include "tools/platen/help/completion.h"

namespace cli::help {
namespace {

using Values = Option::Values;

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char letter : text) {
        result += letter == '\'' || letter == '\\' ? "\\" : "";
        result += letter;
    }
    return result + '\'';
}

std::string valueOf(const Option& option) {
    switch (option.values) {
        case Values::None:
            return "";
        case Values::Files:
            return " -r -F";
        case Values::Folders:
            return " -x -a '(__fish_complete_directories)'";
        case Values::Anything:
            return " -x";
        case Values::Words:
            break;
    }
    std::string words;
    for (const std::string& word : option.words) {
        words += (words.empty() ? "" : " ") + word;
    }
    return " -x -a " + quoted(words);
}

std::string entryOf(const Option& option) {
    std::string entry;
    for (const std::string& name : option.names) {
        entry += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return entry + valueOf(option) + " -d " + quoted(option.purpose);
}

/// `path` are the words behind the program's name.
void addCommand(const std::string& begin, const std::string& path, const Command& command,
                std::string& script) {
    const std::string in = begin + " -n " + quoted("__platen_in " + path);
    const std::string behind = begin + " -n " + quoted("__platen_behind " + path);
    for (const Option& option : command.options) {
        script += (path.empty() ? behind : in) + entryOf(option) + '\n';
    }
    for (const Command& below : command.commands) {
        script += behind + " -f -a " + below.name + " -d " + quoted(below.purpose) + '\n';
    }
    bool takesFiles = false;
    for (const Option& operand : command.operands) {
        takesFiles |= operand.values == Values::Files;
        if (operand.values == Values::Words || operand.values == Values::Folders) {
            // The first operand alone has words.
            script += (operand.values == Values::Words ? behind : in) + valueOf(operand) + '\n';
        }
    }
    if (!takesFiles && command.commands.empty()) {
        script += in + " -f\n";
    }
    for (const Command& below : command.commands) {
        addCommand(begin, path + (path.empty() ? "" : " ") + below.name, below, script);
    }
}

constexpr const char* head =
    R"(# What fish completes behind platen; made by: platen --completion fish

# The line begins with these words.
function __platen_in
    set -l words (commandline -opc)[2..-1]
    set -l many (count $argv)
    test (count $words) -ge $many
    and test "$words[1..$many]" = "$argv"
end

# Nothing but these words and options is there.
function __platen_behind
    set -l words (string match -v -- '-*' (commandline -opc)[2..-1])
    test "$words" = "$argv"
end

)";

}  // namespace

std::string fishCompletion(const Command& program) {
    std::string script = head;
    addCommand("complete -c " + program.name, "", program, script);
    return script;
}

}  // namespace cli::help

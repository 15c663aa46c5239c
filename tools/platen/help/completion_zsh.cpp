#include "tools/platen/help/completion.h"

namespace cli::help {
namespace {

using Values = Option::Values;

/// With a backslash before each of `special`.
std::string escaped(const std::string& text, const std::string& special) {
    std::string result;
    for (const char letter : text) {
        result += special.find(letter) == std::string::npos ? "" : "\\";
        result += letter;
    }
    return result;
}

/// "IN:_files"
std::string valueOf(const Option& option) {
    std::string offered = "_platen_anything";
    if (option.values == Values::Words) {
        offered = "(";
        for (const std::string& word : option.words) {
            offered += (offered == "(" ? "" : " ") + word;
        }
        offered += ')';
    } else if (option.values == Values::Files) {
        offered = "_files";
    } else if (option.values == Values::Folders) {
        offered = "_files -/";
    }
    return escaped(option.value, ":\\") + ':' + offered;
}

/// The specification of an option, once for each of its names.
void addOption(const Option& option, std::string& script) {
    std::string all;
    for (const std::string& name : option.names) {
        all += (all.empty() ? "" : " ") + name;
    }
    for (const std::string& name : option.names) {
        const std::string unique = option.repeated ? "*" : '(' + all + ')';
        const std::string value = option.values == Values::None ? "" : ':' + valueOf(option);
        // "--to=svg" and "--to svg"
        const char* assigned = name.starts_with("--") && !value.empty() ? "=" : "";
        script += " \\\n        " + shellQuoted(unique + name + assigned + '[' +
                                                escaped(option.purpose, "[]\\") + ']' + value);
    }
}

void addFunction(const std::string& name, const Command& command, std::string& script) {
    script += '\n' + name + "() {\n";
    if (!command.commands.empty()) {
        script += "    local curcontext=$curcontext state line\n    local -a commands\n";
    }
    script += command.commands.empty() ? "    _arguments -s" : "    _arguments -C";
    for (const Option& option : command.options) {
        addOption(option, script);
    }
    std::size_t place = 0;
    for (const Option& operand : command.operands) {
        script += " \\\n        " + shellQuoted((operand.repeated ? "*" : std::to_string(++place)) +
                                                ':' + valueOf(operand));
    }
    if (command.commands.empty()) {
        script += "\n}\n";
        return;
    }
    script +=
        " \\\n        '1:command:->command' '*::operand:->operand'\n"
        "    case $state in\n        command)\n            commands=(";
    for (const Command& below : command.commands) {
        script += "\n                " +
                  shellQuoted(escaped(below.name, ":\\") + ':' + escaped(below.purpose, "\\"));
    }
    script +=
        "\n            )\n            _describe command commands\n            ;;\n"
        "        operand)\n            (( $+functions[" +
        name + "_$words[1]] )) && " + name + "_$words[1]\n            ;;\n    esac\n}\n";
    for (const Command& below : command.commands) {
        addFunction(name + '_' + below.name, below, script);
    }
}

}  // namespace

std::string zshCompletion(const Command& program) {
    std::string script = "#compdef " + program.name +
                         "\n# What zsh completes behind platen; made by: platen --completion zsh\n";
    // A blank action says that nothing is offered, but then zsh offers no options either.
    script += "\n_platen_anything() {\n    return 1\n}\n";
    addFunction('_' + program.name, program, script);
    return script + "\n_" + program.name + " \"$@\"\n";
}

}  // namespace cli::help

#include "tools/platen/help/completion.h"

namespace cli::help {
namespace {

using Values = Option::Values;

/// What the script calls the values of an option or operand: the words themselves, or their kind.
std::string kindOf(const Option& option) {
    if (option.values != Values::Words) {
        return option.values == Values::Files     ? ":files"
               : option.values == Values::Folders ? ":folders"
                                                  : ":anything";
    }
    std::string words;
    for (const std::string& word : option.words) {
        words += (words.empty() ? "" : " ") + word;
    }
    return words;
}

/// One line for the command, and those below it.
void addOutline(const std::string& path, const Command& command, std::string& script) {
    std::string commands;
    for (const Command& below : command.commands) {
        commands += (commands.empty() ? "" : " ") + below.name;
    }
    std::string options;
    for (const Option& option : command.options) {
        for (const std::string& name : option.names) {
            options += (options.empty() ? "" : " ") + name;
        }
    }
    std::string operands;
    bool repeated = false;
    for (const Option& operand : command.operands) {
        operands += (operands.empty() ? "" : " ") + shellQuoted(kindOf(operand));
        repeated = operand.repeated;
    }
    script += "        " + shellQuoted(path) + ")\n            commands=" + shellQuoted(commands) +
              " options=" + shellQuoted(options) + " operands=(" + operands +
              ") repeated=" + (repeated ? "1" : "0") + " ;;\n";
    for (const Command& below : command.commands) {
        addOutline(path + ' ' + below.name, below, script);
    }
}

void addValues(const std::string& path, const Command& command, std::string& script) {
    for (const Option& option : command.options) {
        if (option.values == Values::None) {
            continue;
        }
        std::string names;
        for (const std::string& name : option.names) {
            names += (names.empty() ? "" : " | ") + shellQuoted(path + ' ' + name);
        }
        script += "        " + names + ") value=" + shellQuoted(kindOf(option)) + " ;;\n";
    }
    for (const Command& below : command.commands) {
        addValues(path + ' ' + below.name, below, script);
    }
}

constexpr const char* head =
    R"(# What bash completes behind platen; made by: platen --completion bash

# What a command takes: the words behind "platen" are $1.
_platen_outline() {
    case $1 in
)";

constexpr const char* between = R"(    esac
}

# What the option $2 of a command takes; false for one that takes nothing.
_platen_value() {
    case "$1 $2" in
)";

constexpr const char* tail = R"(        *) return 1 ;;
    esac
}

_platen() {
    local cur=${COMP_WORDS[COMP_CWORD]} path=platen index=1 operand=0
    local word value commands options operands repeated
    COMPREPLY=()
    _platen_outline "$path"
    for ((; index < COMP_CWORD; ++index)); do
        word=${COMP_WORDS[index]}
        if [[ $word == = ]]; then
            ((++index))
        elif [[ " $commands " == *" $word "* ]]; then
            path+=" $word"
            _platen_outline "$path"
        elif [[ $word == -?* ]]; then
            # "--to=svg" is three words.
            if _platen_value "$path" "$word"; then
                [[ ${COMP_WORDS[index + 1]} != = ]] || ((++index))
                ((++index))
            fi
        else
            ((++operand))
        fi
    done
    if ((index > COMP_CWORD)); then
        [[ $cur != = ]] || cur=
    elif [[ $cur == -* ]]; then
        value=$options
    elif [[ -n $commands ]]; then
        value=$commands
    else
        ((!repeated || operand < ${#operands[@]})) || operand=$((${#operands[@]} - 1))
        value=${operands[operand]:-:anything}
    fi
    case $value in
        :files)
            compopt -o filenames 2>/dev/null
            if [[ $cur == @* ]]; then
                mapfile -t COMPREPLY < <(compgen -P @ -f -- "${cur#@}")
            else
                mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            fi
            ;;
        :folders)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$cur")
            ;;
        :anything) ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$value" -- "$cur") ;;
    esac
}

complete -F _platen platen
)";

}  // namespace

std::string shellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char letter : text) {
        quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    }
    return quoted + '\'';
}

std::string bashCompletion(const Command& program) {
    std::string script = head;
    addOutline(program.name, program, script);
    script += between;
    addValues(program.name, program, script);
    return script + tail;
}

}  // namespace cli::help

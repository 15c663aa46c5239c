#include "tools/platen/arguments/mistakes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/suggest.h"

namespace cli::arguments {
namespace {

using Apps = std::vector<const CLI::App*>;

/// The program, the command that was chosen, its action: as far as there are any.
Apps chosenOf(const CLI::App& program) {
    Apps chosen{&program};
    while (!chosen.back()->get_subcommands().empty()) {
        chosen.push_back(chosen.back()->get_subcommands().front());
    }
    return chosen;
}

std::string join(const std::vector<std::string>& words, std::string_view separator) {
    std::string joined;
    for (const std::string& word : words) {
        joined += (joined.empty() ? "" : std::string(separator)) + word;
    }
    return joined;
}

std::string nameOf(const Apps& chosen, std::size_t first, std::size_t last) {
    std::vector<std::string> words;
    for (std::size_t index = first; index < last; ++index) {
        words.push_back(chosen[index]->get_name());
    }
    return join(words, " ");
}

/// "platen", or "paper add" of "platen paper add".
std::string shortName(const Apps& chosen, std::size_t depth) {
    return nameOf(chosen, depth == 1 ? 0 : 1, depth);
}

std::vector<std::wstring> subcommandsOf(const CLI::App& app) {
    std::vector<std::wstring> names;
    for (const CLI::App* subcommand : app.get_subcommands({})) {
        names.push_back(ut::decodePath(subcommand->get_name()));
    }
    return names;
}

std::vector<std::wstring> optionsOf(const CLI::App& app) {
    std::vector<std::wstring> names;
    for (const CLI::Option* option : app.get_options()) {
        // One without a group is hidden.
        if (option->get_group().empty()) {
            continue;
        }
        for (const std::string& name : option->get_lnames()) {
            names.push_back(ut::decodePath("--" + name));
        }
    }
    return names;
}

/// What goes behind an option: "BYTES", "{pdf,image,none}".
std::string valueOf(const CLI::Option& option) {
    constexpr std::string_view anything = "TEXT:";
    const std::string value = option.get_type_name();
    return value.substr(value.starts_with(anything) ? anything.size() : 0);
}

/// A word that no option, operand or command took.
std::string unknown(const CLI::App& app, const std::string& name, const std::string& word) {
    if (word.size() > 1 && word.starts_with('-')) {
        const std::string option = word.substr(0, word.find('='));
        return name + " has no option \"" + option + '"' +
               suggestion(ut::decodePath(option), optionsOf(app));
    }
    if (const std::vector<std::wstring> names = subcommandsOf(app); !names.empty()) {
        const bool isProgram = app.get_parent() == nullptr;
        return (isProgram ? "there is no command \"" : name + " has no action \"") + word + '"' +
               suggestion(ut::decodePath(word), names);
    }
    std::vector<std::string> operands;
    for (const CLI::Option* option : app.get_options(&CLI::Option::get_positional)) {
        operands.push_back(option->get_name());
    }
    return '"' + word + "\" is one operand too many: " + name + " takes " +
           (operands.empty() ? "none" : join(operands, " "));
}

/// What has to be there and is not; empty when nothing is missing.
std::string missing(const CLI::App& app, const std::string& name) {
    if (app.get_require_subcommand_min() > 0 && app.get_subcommands().empty()) {
        const bool isProgram = app.get_parent() == nullptr;
        return (isProgram ? "a command is missing" : "an action is missing behind " + name) +
               suggestion({}, subcommandsOf(app));
    }
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_required() && option->count() == 0) {
            const bool operand = option->get_positional();
            names.push_back(option->get_name() + (operand ? "" : ' ' + valueOf(*option)));
        }
    }
    return names.empty() ? "" : name + " needs " + join(names, " and ");
}

/// An option without a value, or one that stands there twice.
std::string wrongCount(const CLI::App& app, const CLI::ParseError& error) {
    const std::string message = error.what();
    const CLI::Option* option = app.get_option_no_throw(message.substr(0, message.find(':')));
    if (option == nullptr) {
        return message;
    }
    return option->count() > 1 ? option->get_name() + " can be given once only"
                               : option->get_name() + " needs a value: " + valueOf(*option);
}

/// The reason, and how many of `chosen` lead to where it arose.
struct Mistake {
    std::string reason;
    std::size_t depth;
};

Mistake mistakeIn(const Apps& chosen, const CLI::ParseError& error) {
    const auto code = static_cast<CLI::ExitCodes>(error.get_exit_code());
    const std::size_t all = chosen.size();
    if (code == CLI::ExitCodes::ArgumentMismatch) {
        return {wrongCount(*chosen.back(), error), all};
    }
    if (code != CLI::ExitCodes::RequiredError && code != CLI::ExitCodes::ExtrasError) {
        return {error.what(), all};
    }
    for (std::size_t depth = 1; depth <= all; ++depth) {
        const CLI::App& app = *chosen[depth - 1];
        if (const std::vector<std::string> words = app.remaining(); !words.empty()) {
            return {unknown(app, shortName(chosen, depth), unmarked(words.front())), depth};
        }
    }
    const std::string reason = missing(*chosen.back(), shortName(chosen, all));
    return {reason.empty() ? error.what() : reason, all};
}

}  // namespace

std::string mistakeOf(const CLI::App& program, const CLI::ParseError& error) {
    const Apps chosen = chosenOf(program);
    const Mistake mistake = mistakeIn(chosen, error);
    return mistake.reason + (mistake.reason.ends_with('?') ? " See " : "; see ") +
           nameOf(chosen, 0, mistake.depth) + " --help";
}

}  // namespace cli::arguments

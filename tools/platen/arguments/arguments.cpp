#include "tools/platen/arguments/arguments.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <platen/utcore.h>
#include "tools/platen/arguments/suggest.h"

namespace cli::arguments {
namespace {

/// The parser reads an argument in brackets as a list. A mark before it keeps it one argument.
constexpr char mark = '\x01';

/// Replaces a size by the number of its bytes; says why when it is none.
std::string sizeInBytes(std::string& size) {
    constexpr bool thousands = false;
    const std::string given = unmarked(size);
    try {
        // A negative one would be taken for a very large number.
        if (given.find('-') == std::string::npos && CLI::AsSizeValue(thousands)(size).empty()) {
            return {};
        }
    } catch (const CLI::ValidationError&) {
        // Its words are about units alone.
    }
    return '"' + given + "\" is no size; write a number of bytes, or one such as 64MB or 1GB";
}

}  // namespace

std::string marked(const std::string& argument) {
    const bool needsMark = argument.starts_with('[') || argument.starts_with(mark);
    return needsMark ? mark + argument : argument;
}

std::string unmarked(const std::string& argument) {
    return argument.substr(argument.starts_with(mark) ? 1 : 0);
}

CLI::Option* takeText(CLI::Option* option) {
    return option->transform(CLI::Validator(
        [](std::string& argument) {
            argument = unmarked(argument);
            return std::string();
        },
        ""));
}

CLI::Validator oneOf(std::vector<std::string> words) {
    std::string description;
    for (const std::string& word : words) {
        description += (description.empty() ? '{' : ',') + word;
    }
    return {[words = std::move(words)](const std::string& argument) {
                if (std::ranges::find(words, argument) != words.end()) {
                    return std::string();
                }
                std::vector<std::wstring> names;
                std::ranges::transform(words, std::back_inserter(names), ut::decodePath);
                const std::string given = unmarked(argument);
                return "there is no \"" + given + '"' + suggestion(ut::decodePath(given), names);
            },
            description + '}'};
}

CLI::App* addCommand(CLI::App& program, const char* name, const char* purpose, const char* footer) {
    CLI::App* command = program.add_subcommand(name, purpose);
    command->group("Commands")->footer(footer);
    return command;
}

void addMaxBody(CLI::App* command, std::uint64_t& bytes) {
    command
        ->add_option("--max-body", bytes,
                     "Refuse files with more content than this (256MB), such as 1GB")
        ->transform(CLI::Validator(sizeInBytes, ""))
        ->type_name("BYTES");
}

CLI::Option* addOutput(CLI::App* command, std::string& out) {
    return takeText(command->add_option("-o,--output", out, "File to write"))->type_name("OUT");
}

}  // namespace cli::arguments

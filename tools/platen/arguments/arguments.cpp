#include "tools/platen/arguments/arguments.h"

namespace cli::arguments {
namespace {

/// The parser reads an argument in brackets as a list. A mark before it keeps it one argument.
constexpr char mark = '\x01';

}  // namespace

std::string marked(const std::string& argument) {
    const bool needsMark = argument.starts_with('[') || argument.starts_with(mark);
    return needsMark ? mark + argument : argument;
}

CLI::Option* takeText(CLI::Option* option) {
    return option->transform(CLI::Validator(
        [](std::string& argument) {
            argument.erase(0, argument.starts_with(mark) ? 1 : 0);
            return std::string();
        },
        ""));
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
        ->transform(CLI::AsSizeValue(false).description(""))
        // It would be taken for a very large number.
        ->transform(CLI::Validator(
            [](std::string& size) {
                return size.find('-') == std::string::npos ? "" : "a size cannot be negative";
            },
            ""))
        ->type_name("BYTES");
}

CLI::Option* addOutput(CLI::App* command, std::string& out) {
    return takeText(command->add_option("-o,--output", out, "File to write"))->type_name("OUT");
}

}  // namespace cli::arguments

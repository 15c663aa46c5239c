/// What the options of several commands have in common.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace cli::arguments {

/// The argument as the parser has to see it so that it takes it for one text.
std::string marked(const std::string& argument);

/// The argument as it was before `marked`.
std::string unmarked(const std::string& argument);

/// Gives `option` the text as it was before `marked`. Everything that may hold any text needs this:
/// names of files, names of papers, values.
CLI::Option* takeText(CLI::Option* option);

/// Accepts one of `words` only, and says which it may be.
CLI::Validator oneOf(std::vector<std::string> words);

/// A command of `program`; `footer` is shown below its options.
CLI::App* addCommand(CLI::App& program, const char* name, const char* purpose, const char* footer);

/// Every command that reads files of others takes it.
void addMaxBody(CLI::App* command, std::uint64_t& bytes);

CLI::Option* addOutput(CLI::App* command, std::string& out);

}  // namespace cli::arguments

/// What is wrong with a command line, in words.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace cli::arguments {

/// Why `program` could not read its arguments: first what was not understood or is missing, then
/// what was probably meant, then where help is.
std::string mistakeOf(const CLI::App& program, const CLI::ParseError& error);

}  // namespace cli::arguments

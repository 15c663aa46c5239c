/// What shells complete, made of what the parser knows.
#pragma once

#include <string>

#include "tools/platen/help/outline.h"

namespace cli::help {

// Scripts that each shell takes as they are.
std::string bashCompletion(const Command& program);
std::string fishCompletion(const Command& program);
std::string zshCompletion(const Command& program);

/// `text` in single quotes with nothing in it that ends them, for `bash` and `zsh`.
std::string shellQuoted(const std::string& text);

}  // namespace cli::help

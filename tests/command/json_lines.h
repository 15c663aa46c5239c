/// Output of the command with one JSON object a line.
#pragma once

#include <nlohmann/json.hpp>

#include "tests/command/support.h"

/// What a command that went well has printed.
inline std::vector<nlohmann::json> jsonLinesOf(const CommandResult& result) {
    EXPECT_EQ(result.code, 0) << result.err;
    std::vector<nlohmann::json> lines;
    std::istringstream text(result.out);
    for (std::string line; std::getline(text, line);) {
        lines.push_back(nlohmann::json::parse(line));
    }
    return lines;
}

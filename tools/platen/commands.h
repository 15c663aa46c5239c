/// The commands and what each can be told. File names and texts are UTF-8 as the caller gave them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pia.h"
#include "tools/platen/console.h"

namespace platen {

/// Bytes of a body that a command reads; more is refused.
inline constexpr std::uint64_t usualMaxBody = PiaLimits{}.bodyBytes;

struct InfoOptions {
    std::vector<std::string> files;
    bool json = false;
    std::uint64_t maxBody = usualMaxBody;
};

struct GetOptions {
    std::string file;
    std::vector<std::string> paths;
    bool json = false;
    std::uint64_t maxBody = usualMaxBody;
};

struct CheckOptions {
    std::vector<std::string> files;
    bool json = false;
    std::uint64_t maxBody = usualMaxBody;
};

struct ConvertOptions {
    std::string in;
    std::string out;
    /// A word such as "stb"; empty: the extension of `out` decides.
    std::string to;
    /// Begins the names of the styles that a colour table is turned into; empty: "Style".
    std::string prefix;
    std::uint64_t maxBody = usualMaxBody;
};

struct CreateOptions {
    /// "ctb" or "stb".
    std::string kind;
    std::string out;
    std::string description;
};

/// Says what files are and hold.
ExitCode info(const InfoOptions& options, const Console& console);
/// Prints items of the raw tree.
ExitCode get(const GetOptions& options, const Console& console);
/// Verifies files and lists every finding.
ExitCode check(const CheckOptions& options, const Console& console);
/// Writes a file in another form or as another document.
ExitCode convert(const ConvertOptions& options, const Console& console);
/// Makes a fresh plot style table.
ExitCode create(const CreateOptions& options, const Console& console);

}  // namespace platen

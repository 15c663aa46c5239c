/// The commands and what each can be told. File names and texts are UTF-8 as the caller gave them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <platen/pia.h>
#include "tools/platen/console/console.h"

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
    /// Ask the printers that configurations name, too.
    bool printers = false;
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
    /// "ctb", "stb", "pc3" or "pmp".
    std::string kind;
    std::string out;
    /// Of a table.
    std::string description;
    /// The device and, unless empty, the paper of a configuration.
    std::string device;
    std::string paper;
    /// The printer of a configuration, instead of a device.
    std::string printer;
    /// The configuration that plot model parameters are made for.
    std::string from;
};

struct SetOptions {
    std::string file;
    /// "PATH=VALUE", "PATH:TYPE=VALUE" or "PATH:block".
    std::vector<std::string> assignments;
    /// Paths of items to delete, before anything is assigned.
    std::vector<std::string> deleted;
    std::string out;
    std::uint64_t maxBody = usualMaxBody;
    bool inPlace = false;
    /// The old file is kept under its name and this, unless it is empty.
    std::string backupSuffix;
};

struct MigrateOptions {
    std::string folder;
    /// "OLD=NEW"
    std::vector<std::string> maps;
    bool dryRun = false;
    /// Change names only, without asking printers.
    bool namesOnly = false;
};

struct PapersOptions {
    std::string file;
    /// "pdf", "image" or "none".
    std::string device;
    /// An installed printer.
    std::string printer;
    bool catalogue = false;
    bool json = false;
};

struct PrintersOptions {
    bool json = false;
};

struct DevmodeOptions {
    /// A printer, or a configuration when it ends in ".pc3".
    std::string source;
    bool json = false;
};

enum class PaperAction { Add, Remove, Rename, Resize };

struct PaperOptions {
    PaperAction action = PaperAction::Add;
    std::string file;
    std::string name;
    std::string newName;
    /// "WIDTHxHEIGHT"
    std::string size;
    /// "mm", "in", "px"; empty for the paper's own or what suits the device.
    std::string units;
    /// "LEFT,BOTTOM,RIGHT,TOP"; empty: none, or those that there are.
    std::string margins;
};

/// Says what files are and hold.
ExitCode info(const InfoOptions& options, const Console& console);
/// Prints items of the raw tree.
ExitCode get(const GetOptions& options, const Console& console);
/// Verifies files and lists every finding.
ExitCode check(const CheckOptions& options, const Console& console);
/// Writes a file in another form or as another document.
ExitCode convert(const ConvertOptions& options, const Console& console);
/// Makes a fresh document.
ExitCode create(const CreateOptions& options, const Console& console);
/// Changes items of the raw tree.
ExitCode set(const SetOptions& options, const Console& console);
/// Moves the configurations of a folder from printers to others.
ExitCode migrate(const MigrateOptions& options, const Console& console);
/// Lists the papers of a device, of a printer, of a file or of the catalogue.
ExitCode papers(const PapersOptions& options, const Console& console);
/// Edits the custom papers of a configuration or of plot model parameters.
ExitCode paper(const PaperOptions& options, const Console& console);
/// Lists the installed printers.
ExitCode printers(const PrintersOptions& options, const Console& console);
/// Prints the device mode of a printer or of a configuration.
ExitCode devmode(const DevmodeOptions& options, const Console& console);

}  // namespace platen

/// The moves from printers to others that a command line asks for.
#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include <platen/house.h>
#include "tools/platen/console/console.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cli::printers {

struct MoveOptions {
    /// "OLD=NEW"
    std::vector<std::string> maps{};
    /// Change names only, without asking printers.
    bool namesOnly = false;
};

/// Adds --map, which is returned, and --names-only.
CLI::Option* addMoves(CLI::App* command, MoveOptions& options);

class PrinterMoves {
public:
    /// Takes the maps, and asks every new printer once where printers can be asked. False after
    /// messages.
    bool read(const MoveOptions& options, const Console& console);

    const platen::MoveMap& map() const { return map_; }
    const std::map<std::wstring, platen::InstalledPrinter>& asked() const { return asked_; }

    /// A configuration names `printer`, which moves unless `move` is null. For any thread.
    void note(const std::wstring& printer, const platen::PrinterMove* move);
    /// Names the moves that no configuration asked for: `Difference` when there are any.
    ExitCode reportUnused(const Console& console) const;

private:
    bool ask(const Console& console);

    platen::MoveMap map_;
    std::map<std::wstring, platen::InstalledPrinter> asked_;
    std::mutex mutex_;
    std::set<std::wstring> moved_;
    std::set<std::wstring> stayed_;
};

}  // namespace cli::printers

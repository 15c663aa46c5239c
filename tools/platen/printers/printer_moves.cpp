#include "tools/platen/printers/printer_moves.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <utility>

#include "tools/platen/arguments/arguments.h"
#include "tools/platen/arguments/suggest.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_names.h"
#include "tools/platen/words/words.h"

namespace cli::printers {

CLI::Option* addMoves(CLI::App* command, MoveOptions& options) {
    CLI::Option* map = arguments::takeText(
        command->add_option("--map", options.maps, "Old and new printer; may be repeated"));
    command->add_flag("--names-only", options.namesOnly,
                      "Do not ask printers; their drivers stay as they are (always so where "
                      "printers cannot be asked)");
    return map->type_name("OLD=NEW");
}

bool PrinterMoves::read(const MoveOptions& options, const Console& console) {
    bool sound = true;
    for (const std::string& argument : options.maps) {
        if (const platen::EditResult done = map_.add(argument); !done) {
            fail(console, "--map " + argument, done->reason);
            sound = false;
        }
    }
    return sound && (options.namesOnly || !printersFault().empty() || ask(console));
}

bool PrinterMoves::ask(const Console& console) {
    bool all = true;
    for (const platen::PrinterMove& move : map_.moves()) {
        std::optional<platen::InstalledPrinter> printer = askPrinter(move.to);
        if (!printer) {
            fail(console, "",
                 "there is no printer " + words::quoted(move.to) +
                     arguments::suggestion(move.to, printerNames()) +
                     "; to rename without asking printers, add --names-only");
            all = false;
            continue;
        }
        asked_.insert_or_assign(move.to, std::move(*printer));
    }
    return all;
}

void PrinterMoves::note(const std::wstring& printer, const platen::PrinterMove* move) {
    const std::lock_guard lock(mutex_);
    if (move != nullptr) {
        moved_.insert(move->from);
    } else if (!printer.empty()) {
        stayed_.insert(printer);
    }
}

ExitCode PrinterMoves::reportUnused(const Console& console) const {
    ExitCode code = ExitCode::Ok;
    const std::vector<std::wstring> names(stayed_.begin(), stayed_.end());
    for (const platen::PrinterMove& move : map_.moves()) {
        if (!moved_.contains(move.from)) {
            fail(console, "",
                 "no configuration names the printer " + words::quoted(move.from) +
                     arguments::suggestion(move.from, names));
            code = ExitCode::Difference;
        }
    }
    return code;
}

}  // namespace cli::printers

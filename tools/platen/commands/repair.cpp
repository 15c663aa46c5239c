#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include <platen/edit.h>
#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/selection.h"
#include "tools/platen/files/source.h"
#include "tools/platen/words/repair_text.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Everything that is taken for granted is a line with a code that stays the same
from release to release, the place, what was there and what is there now; then comes what is lost.
Values come from the file or from the defaults of its document, which are listed. OUT passes
platen check; it is never IN. Exit 0: nothing was wrong, OUT is a copy; 3: repaired; 2: nothing
usable is left, and nothing was written.

Examples:
  platen repair broken.ctb -o sound.ctb
  platen repair broken.pc3 --dry-run              say what would be done
  platen repair broken.pc3 -o sound.pc3 --json    one JSON object, schema platen.repair/1
  platen check --fix broken.ctb -o sound.ctb      only what is certain)";

struct RepairOptions {
    std::string in;
    std::string out;
    bool json = false;
    bool dryRun = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

/// Why OUT cannot be there; empty when it can.
std::string usageFault(const RepairOptions& options) {
    if (options.out.empty() != options.dryRun) {
        return options.dryRun ? "" : "say where the result goes: -o OUT, or --dry-run";
    }
    return !options.out.empty() && files::isSameFile(options.in, options.out)
               ? "OUT is the damaged file itself, which is never written over; name another"
               : "";
}

ExitCode run(const RepairOptions& options, const Console& console) {
    if (const std::string fault = usageFault(options); !fault.empty()) {
        return fail(console, options.in, fault);
    }
    std::string bytes;
    if (!files::readBytes(options.in, bytes, options.maxBody, console)) {
        return ExitCode::Error;
    }
    const bool isStream = options.in == files::standardStream;
    const platen::RepairSettings settings{
        .limits = platen::readingUpTo(options.maxBody).limits,
        .file = isStream ? std::wstring() : ut::decodePath(options.in)};
    const platen::RepairResult result = platen::repair(bytes, settings);
    ExitCode code = words::exitCodeOf(result);
    if (result && !options.dryRun) {
        code = worse(code, files::writeBytes(result.bytes, options.out, console));
    }
    const Console said = files::besideData(options.out, console);
    if (options.json) {
        said.out << platen::repairJson(options.in, result) << '\n';
    } else {
        words::printRepair(options.in, result, said);
    }
    return result || options.json ? code : fail(console, options.in, result.reason);
}

}  // namespace

CommandEntry addRepair(CLI::App& program) {
    CLI::App* command =
        arguments::addCommand(program, "repair", "Save what can be saved of a damaged file", help);
    const auto options = std::make_shared<RepairOptions>();
    arguments::takeText(
        command->add_option("IN", options->in, "The damaged file; -: standard input"))
        ->required();
    arguments::addOutput(command, options->out);
    command->add_flag("--json", options->json, "One JSON object");
    command->add_flag("--dry-run", options->dryRun, "Write nothing");
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands

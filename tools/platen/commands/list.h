/// The commands as the command line finds them: each stands in a file of its own beside this one.
#pragma once

#include <functional>
#include <memory>

#include "tools/platen/console/console.h"

namespace CLI {
class App;
}

namespace cli::commands {

/// A command, and how it is run once its arguments were read.
struct CommandEntry {
    /// Belongs to the program that it was added to.
    CLI::App* app;
    std::function<ExitCode(const Console&)> run;
};

template <class Options>
CommandEntry entryOf(CLI::App* app, std::shared_ptr<Options> options,
                     ExitCode (*run)(const Options&, const Console&)) {
    return {app, [options, run](const Console& console) { return run(*options, console); }};
}

// Each adds a command with its options to `program`. A new one is a line here.
CommandEntry addInfo(CLI::App& program);
CommandEntry addGet(CLI::App& program);
CommandEntry addCheck(CLI::App& program);
CommandEntry addAudit(CLI::App& program);
CommandEntry addDiff(CLI::App& program);
CommandEntry addChart(CLI::App& program);
CommandEntry addConvert(CLI::App& program);
CommandEntry addCreate(CLI::App& program);
CommandEntry addSet(CLI::App& program);
CommandEntry addApply(CLI::App& program);
CommandEntry addMerge(CLI::App& program);
CommandEntry addStyle(CLI::App& program);
CommandEntry addLineweights(CLI::App& program);
CommandEntry addMergePens(CLI::App& program);
CommandEntry addMigrate(CLI::App& program);
CommandEntry addBundle(CLI::App& program);
CommandEntry addRestore(CLI::App& program);
CommandEntry addPapers(CLI::App& program);
CommandEntry addPaper(CLI::App& program);
CommandEntry addPrinters(CLI::App& program);
CommandEntry addDevmode(CLI::App& program);
CommandEntry addRepair(CLI::App& program);
CommandEntry addView(CLI::App& program);

/// In the order in which the help of the program shows them.
inline constexpr auto list = {addInfo,   addGet,         addCheck,     addAudit,   addDiff,
                              addView,   addChart,       addConvert,   addCreate,  addSet,
                              addStyle,  addLineweights, addMergePens, addApply,   addMerge,
                              addRepair, addMigrate,     addBundle,    addRestore, addPapers,
                              addPaper,  addPrinters,    addDevmode};

}  // namespace cli::commands

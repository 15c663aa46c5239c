#include <memory>
#include <string>

#include <platen/pia.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "tools/platen/commands.h"
#include "tools/platen/commands/create_configuration.h"
#include "tools/platen/files/losses.h"
#include "tools/platen/files/output.h"

namespace platen {
namespace {

/// Which option does not go with the kind, or is missing; empty when none.
std::string usageFault(const CreateOptions& options) {
    const bool configuration = options.kind == "pc3";
    const bool parameters = options.kind == "pmp";
    if (configuration && options.device.empty() == options.printer.empty()) {
        return "a configuration needs either --device NAME, such as --device \"Print As PDF\", or "
               "--printer NAME";
    }
    if (parameters && options.from.empty()) {
        return "plot model parameters are made for a configuration: add --from FILE.pc3";
    }
    const struct {
        const std::string& value;
        bool fits;
        const char* reason;
    } rules[] = {
        {options.device, configuration, "--device goes with pc3 only; leave it out"},
        {options.printer, configuration, "--printer goes with pc3 only; leave it out"},
        {options.paper, configuration, "--paper goes with pc3 only; leave it out"},
        {options.from, parameters, "--from goes with pmp only; leave it out"},
        {options.description, !configuration && !parameters,
         "--description goes with ctb and stb only; leave it out"},
    };
    for (const auto& rule : rules) {
        if (!rule.value.empty() && !rule.fits) {
            return rule.reason;
        }
    }
    return {};
}

ExitCode makeTable(const CreateOptions& options, PiaBlock& root, const Console& console) {
    std::wstring description;
    if (!ut::decodeUtf8(options.description, description)) {
        return fail(console, options.out, "the description is not UTF-8; nothing was written");
    }
    const std::unique_ptr<CPlotStyleTable> table(
        CPlotStyleTable::create(options.kind == "ctb", description.c_str()));
    if (!table->writeToBlock(root)) {
        return fail(console, options.out, "the table cannot be written");
    }
    return ExitCode::Ok;
}

ExitCode make(const CreateOptions& options, PiaBlock& root, const Console& console) {
    if (options.kind == "pc3") {
        return makeConfiguration(options, root, console);
    }
    return options.kind == "pmp" ? makeParameters(options, root, console)
                                 : makeTable(options, root, console);
}

PiaKind headerOf(const std::string& kind) {
    if (kind == "ctb") {
        return PiaKind::Ctb;
    }
    return kind == "stb" ? PiaKind::Stb : PiaKind::Pc3;
}

}  // namespace

ExitCode create(const CreateOptions& options, const Console& console) {
    if (const std::string fault = usageFault(options); !fault.empty()) {
        return fail(console, options.out, fault);
    }
    PiaTree tree;
    const ExitCode made = make(options, tree.root(), console);
    if (made == ExitCode::Error) {
        return made;
    }
    const std::vector<std::wstring> lost = lostWith(options.out, tree.root());
    const ExitCode written =
        writeCompressed(tree.root(), headerOf(options.kind), options.out, console);
    if (written == ExitCode::Error) {
        return written;
    }
    return worse(worse(made, written), warnOfLosses(lost, options.out, console));
}

}  // namespace platen

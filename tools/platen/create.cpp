#include <memory>
#include <string>

#include "pia.h"
#include "plotstyle.h"
#include "tools/platen/commands.h"
#include "tools/platen/output.h"
#include "utcore.h"

namespace platen {

ExitCode create(const CreateOptions& options, const Console& console) {
    const bool colourDependent = options.kind == "ctb";
    std::wstring description;
    if (!ut::decodeUtf8(options.description, description)) {
        return fail(console, options.out, "the description is not UTF-8; nothing was written");
    }
    const std::unique_ptr<CPlotStyleTable> table(
        CPlotStyleTable::create(colourDependent, description.c_str()));
    PiaTree tree;
    if (!table->writeToBlock(tree.root())) {
        return fail(console, options.out, "the table cannot be written");
    }
    return writeCompressed(tree.root(), colourDependent ? PiaKind::Ctb : PiaKind::Stb, options.out,
                           console);
}

}  // namespace platen

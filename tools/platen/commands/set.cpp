#include <algorithm>
#include <optional>
#include <string>

#include <platen/pia.h>
#include "tools/platen/commands.h"
#include "tools/platen/document_state.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"
#include "tools/platen/files/write_source.h"
#include "tools/platen/item_edit.h"

namespace platen {
namespace {

/// What is wrong with the options taken together; empty when nothing is.
std::string usageFault(const SetOptions& options) {
    if (options.inPlace == !options.out.empty()) {
        return "say where the result goes: either -o OUT or --in-place";
    }
    const bool leadsElsewhere = options.backupSuffix.find_first_of("/\\") != std::string::npos;
    return leadsElsewhere ? "the suffix of --in-place only ends a name; leave slashes out" : "";
}

/// Makes all the changes, saying of each that cannot be made why. False when there was one.
bool edit(const SetOptions& options, ItemEditor& editor, const Console& console) {
    bool done = true;
    const auto note = [&](const std::string& what, const std::string& fault) {
        if (!fault.empty()) {
            fail(console, options.file + ": " + what, fault);
            done = false;
        }
    };
    for (const std::string& path : options.deleted) {
        note("--delete " + path, editor.remove(path));
    }
    for (const std::string& assignment : options.assignments) {
        note(assignment, editor.assign(assignment));
    }
    return done;
}

ExitCode store(const SetOptions& options, Source& source, bool changed, const Console& console) {
    if (!options.inPlace) {
        return writeSource(source, changed, options.out, console);
    }
    if (!options.backupSuffix.empty()) {
        const std::string backup = options.file + options.backupSuffix;
        if (writeBytes(source.bytes.view(), backup, console) != ExitCode::Ok) {
            return ExitCode::Error;
        }
    }
    return changed ? writeSource(source, changed, options.file, console) : ExitCode::Ok;
}

}  // namespace

ExitCode set(const SetOptions& options, const Console& console) {
    if (const std::string fault = usageFault(options); !fault.empty()) {
        return fail(console, options.file, fault);
    }
    Source source;
    if (!readSource(options.file, source, console, readingUpTo(options.maxBody))) {
        return ExitCode::Error;
    }
    const ExitCode read = warn(console, options.file, source.input.report());
    const DocumentState before = documentState(source.input);
    ItemEditor editor(*source.input.root());
    if (!edit(options, editor, console)) {
        return fail(console, options.file, "nothing was written");
    }
    const std::string lost = lostDocument(before, documentState(source.input));
    const ExitCode stored = store(options, source, editor.changed(), console);
    if (stored == ExitCode::Error || lost.empty()) {
        return worse(read, stored);
    }
    return worse(stored, warn(console, options.file, "after these changes " + lost));
}

}  // namespace platen

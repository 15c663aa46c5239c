// Two bodies, with a line "----" between them: what is different, and the one made of the other.
//
// Slow: comparing two documents reads both, writes the differences as JSON and applies them to a
// third, so that an input takes about ten readings.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <platen/compare.h>
#include <platen/edit.h>
#include "fuzz/oracle.h"
#include "fuzz/sound_file.h"
#include "tests/support/random_documents.h"
#include "tests/support/trees.h"

namespace {

using platen::Comparison;

std::string jsonOf(const Comparison& comparison) {
    return platen::diffJson({"a"}, {"b"}, comparison);
}

bool isDocument(PiaInput& input) {
    const platen::DocumentState state = platen::documentState(input);
    return state.kind != platen::FileKind::Pia && state.fault.empty();
}

/// Makes `after` of `before` by what is different; both are documents of one kind.
void requireApplies(const PiaBlock& before, const PiaBlock& after, const Comparison& comparison) {
    platen::ChangeList list;
    require(static_cast<bool>(platen::readChanges(jsonOf(comparison), list)));
    const std::unique_ptr<PiaBlock> made = copyOfTree(before);
    const platen::ApplyResult applied = platen::applyChanges(*made, list.changes);
    require(applied.changes.size() == list.changes.size());
    require(applied.made + applied.alreadyThere + applied.misfits == list.changes.size());
    if (applied.misfits == 0) {
        require(platen::compare(*made, after).equal());
    }
    // What was made is there.
    const platen::ApplyResult again = platen::applyChanges(*made, list.changes);
    require(again.made == 0 || applied.misfits > 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const InputParts parts = partsOf({reinterpret_cast<const char*>(data), size});
    PiaInput before;
    PiaInput after;
    if (!before.openBody(parts.first) || !after.openBody(parts.second)) {
        return 0;
    }
    const Comparison comparison = platen::compare(before, after);
    require(platen::compare(*before.root(), *before.root()).equal());
    const Comparison back = platen::compare(after, before);
    require(comparison.equal() == back.equal());
    for (const std::string& line : platen::describe(comparison)) {
        require(!line.empty() && ut::isUtf8(line));
    }
    const bool documents = isDocument(before) && isDocument(after);
    if (documents && !comparison.throughColors) {
        requireApplies(*before.root(), *after.root(), comparison);
        requireApplies(*after.root(), *before.root(), back);
    }
    if (documents && chosen({reinterpret_cast<const char*>(data), size}, 8)) {
        // Nobody else has changed anything: theirs is taken whole, and once only.
        const std::unique_ptr<PiaBlock> ours = copyOfTree(*before.root());
        const platen::MergeResult merged = platen::merge(*before.root(), *ours, *after.root());
        require(merged.taken + merged.conflicts.size() <= comparison.differences.size());
        const std::unique_ptr<PiaBlock> theirs = copyOfTree(*after.root());
        require(platen::merge(*before.root(), *theirs, *after.root()).conflicts.empty());
        require(comparison.throughColors || platen::compare(*theirs, *after.root()).equal());
    }
    return 0;
}

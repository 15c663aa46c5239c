#include <iterator>
#include <utility>

#include <platen/edit_apply.h>
#include <platen/edit_merge.h>

namespace platen {
namespace {

MergeResult resultOf(std::vector<Difference> changes, ApplyResult applied) {
    MergeResult result;
    result.taken = applied.made;
    for (std::size_t index = 0; index < changes.size(); ++index) {
        AppliedChange& change = applied.changes[index];
        if (change.fate == ChangeFate::DoesNotFit) {
            result.conflicts.push_back(
                {std::move(changes[index]), std::move(change.found), std::move(change.reason)});
        }
    }
    return result;
}

/// Without a base nobody knows who changed what, only what one of them has alone.
MergeResult join(PiaBlock& ours, const PiaBlock& theirs) {
    std::vector<Difference> additions;
    MergeResult result;
    for (Difference& difference : compare(ours, theirs).differences) {
        if (difference.change == Difference::Change::Added) {
            additions.push_back(std::move(difference));
        } else if (difference.change == Difference::Change::Changed) {
            std::shared_ptr<const PiaItem> found = difference.before;
            result.conflicts.push_back(
                {std::move(difference), std::move(found), "both have added the file"});
        }
    }
    ApplyResult applied = applyChanges(ours, additions);
    MergeResult added = resultOf(std::move(additions), std::move(applied));
    result.taken = added.taken;
    std::move(added.conflicts.begin(), added.conflicts.end(), std::back_inserter(result.conflicts));
    return result;
}

}  // namespace

std::vector<std::string> describe(const std::vector<MergeConflict>& conflicts) {
    std::vector<Difference> theirs;
    ApplyResult misfits;
    for (const MergeConflict& conflict : conflicts) {
        theirs.push_back(conflict.theirs);
        misfits.changes.push_back({ChangeFate::DoesNotFit, conflict.reason, conflict.ours});
    }
    return describeMisfits(theirs, misfits);
}

MergeResult merge(const PiaBlock& base, PiaBlock& ours, const PiaBlock& theirs) {
    if (base.items.empty()) {
        return join(ours, theirs);
    }
    std::vector<Difference> changes = compare(base, theirs).differences;
    ApplyResult applied = applyChanges(ours, changes);
    return resultOf(std::move(changes), std::move(applied));
}

}  // namespace platen

/// Making the changes of a comparison in other trees.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <platen/compare.h>
#include <platen/edit_result.h>
#include <platen/pia.h>
#include <platen/platen_api.h>

namespace platen {

/// What became of a change.
enum class ChangeFate {
    Made,
    /// The tree is as the change would have it.
    AlreadyThere,
    /// The tree is neither as before nor as after the change, and stays.
    DoesNotFit,
};

/// What became of one change.
struct AppliedChange {
    ChangeFate fate = ChangeFate::Made;
    /// Why it does not fit: an English phrase without a full stop, UTF-8, printable.
    std::string reason{};
    /// What stands in its place when it does not fit; null for nothing.
    std::shared_ptr<const PiaItem> found{};
};

struct ApplyResult {
    /// In the order of the changes.
    std::vector<AppliedChange> changes{};
    /// How many changes met each fate.
    ///@{
    std::size_t made = 0;
    std::size_t alreadyThere = 0;
    std::size_t misfits = 0;
    ///@}
};

/// Makes those changes that fit. A change finds its place by names, not by numbers, and a line
/// weight by its millimetres, so that it means the same in any document of the kind. What no change
/// names stays as it is. The tree may still have become no document that can be read, when changes
/// of several files were mixed: see `documentState`.
PLATEN_API ApplyResult applyChanges(PiaBlock& root, const std::vector<Difference>& changes);

/// The changes that do not fit, each with the reason, in the lines of a comparison: "Color 1-3:
/// screening 100 % -> 50 %: it is 80, not 100".
PLATEN_API std::vector<std::string> describeMisfits(const std::vector<Difference>& changes,
                                                    const ApplyResult& applied);

/// Changes that were read.
struct ChangeList {
    /// What the files were that were compared; `Pia` when that is not said.
    FileKind kind = FileKind::Pia;
    /// In the order of the text.
    std::vector<Difference> changes{};
};

/// Reads what `diffJson` gives. Refused as `ValueInvalid` when the text is none; a text of any kind
/// is safe.
PLATEN_API EditResult readChanges(std::string_view json, ChangeList& changes);

}  // namespace platen

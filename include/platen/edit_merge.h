/// Joining the changes of two people who began with the same document.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <platen/compare.h>
#include <platen/pia.h>
#include <platen/platen_api.h>

namespace platen {

/// A place that both have changed, and not alike. Ours stays.
struct MergeConflict {
    /// From the base to theirs.
    Difference theirs{};
    /// What stands there; null for nothing.
    std::shared_ptr<const PiaItem> ours{};
    /// Why theirs does not fit: an English phrase without a full stop, UTF-8, printable.
    std::string reason{};
};

/// "Color 7: lineweight 0.25 mm -> 0.35 mm: ...": theirs, and why it does not fit, gathered as the
/// lines of a comparison; UTF-8, without control characters.
PLATEN_API std::vector<std::string> describe(const std::vector<MergeConflict>& conflicts);

struct MergeResult {
    /// In the order of the changes.
    std::vector<MergeConflict> conflicts{};
    /// Changes of theirs that ours did not have.
    std::size_t taken = 0;
};

/// Puts into `ours` what changed from `base` to `theirs`. With an empty base, as for a file that
/// both have added, ours gets what only theirs has, and each other difference is a conflict.
PLATEN_API MergeResult merge(const PiaBlock& base, PiaBlock& ours, const PiaBlock& theirs);

}  // namespace platen

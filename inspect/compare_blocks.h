/// The differences of two blocks by what they mean.
#pragma once

#include <vector>

#include <platen/compare.h>
#include "inspect/meaning.h"

namespace platen {

/// How the styles of two tables are matched.
enum class StyleMatch {
    ByName,
    /// Both have a style for each colour, in its place.
    ByColor,
    /// By what each colour gets; see `Comparison::throughColors`.
    ThroughColors,
};

StyleMatch styleMatchOf(const Meaning& before, const Meaning& after);

/// The differences of the blocks at `place`, which is part of the places of the differences. At
/// most `most` are listed.
std::vector<Difference> differencesOf(const Meaning& before, const PiaBlock& beforeBlock,
                                      const Meaning& after, const PiaBlock& afterBlock,
                                      std::vector<DifferenceStep> place, StyleMatch match,
                                      std::size_t most);

}  // namespace platen

/// The places of a tree that is to be changed, found by what they mean.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include <platen/compare.h>
#include "inspect/meaning.h"

namespace platen {

class ChangeTarget {
public:
    explicit ChangeTarget(PiaBlock& root) : root_(root), meaning_(root) {}

    PiaBlock& root() { return root_; }
    /// The tree as it was before the first change.
    const Meaning& meaning() const { return meaning_; }
    /// See `Meaning::alias`; it is about to go.
    void forgetAlias() { meaning_.forgetAlias(); }

    /// A block on the way to a place; what is left out in the tree is found, but is no part of it.
    /// Null, and why, when there is none.
    const PiaBlock* find(std::span<const DifferenceStep> way, std::string& why);
    /// The same for a block that `find` has found; what was left out is put into the tree first.
    PiaBlock& reach(std::span<const DifferenceStep> way);
    /// The item at the end of a place whose block is `parent`; null for none.
    const PiaItem* itemIn(const PiaBlock& parent, const Difference& change);

    /// What list the block at the end of `way` is.
    List listAt(std::span<const DifferenceStep> way) const {
        return platen::listAt(meaning_.family(), way);
    }
    /// How many entries have the name of the step.
    std::size_t countOf(PiaBlock& list, const List& kind, const DifferenceStep& step);
    /// Adds an entry under a number of its own.
    PiaBlock& addEntry(PiaBlock& list, const List& kind, const DifferenceStep& step,
                       const PiaBlock& entry);
    void removeEntry(PiaBlock& list, const List& kind, const DifferenceStep& step);
    /// Gives the blocks of the styles numbers without gaps. Nothing that was found stands after it.
    void renumberStyles();

private:
    using EntryKey = std::tuple<std::wstring, std::optional<PiaItemType::Value>, std::size_t>;
    struct Entries {
        std::map<EntryKey, PiaBlock*> blocks;
        std::size_t nextNumber = 0;
    };

    static EntryKey keyOf(const DifferenceStep& step) {
        return {step.name, step.valueType, step.number};
    }
    Entries& entriesIn(const PiaBlock& list, const List& kind);
    const PiaBlock* follow(const PiaBlock& block, std::span<const DifferenceStep> way,
                           std::size_t index, std::string& why);

    PiaBlock& root_;
    Meaning meaning_;
    std::map<const PiaBlock*, Entries> lists_;
};

}  // namespace platen

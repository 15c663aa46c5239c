/// What changes of a plot style table have to do with each other.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <platen/compare.h>
#include "edit/change_target.h"

namespace platen {

/// What every change of a comparison has.
bool isWhole(const Difference& change);

class TableChanges {
public:
    TableChanges(ChangeTarget& target, const std::vector<Difference>& changes);

    /// Why a change of what one colour has would change more; empty when it would not.
    std::string sharedFault(const Difference& change);
    /// Why a colour cannot have the style that the change names; empty when it can.
    std::string nameFault(const Difference& change);
    /// The colours that name a style, in words; empty for none, and for what is no style.
    std::string colorsNaming(const PiaItem& style);
    /// A colour of the table names its style by the name that the style was given.
    void renameInIndex(const DifferenceStep& color, const PiaItem& name);

    /// The list of line weights as the changes have made it.
    const std::vector<double>& weights();
    /// The place of the wanted line weight in it: that of the change, as it is spelt there, if it
    /// stands there.
    std::optional<std::wstring> weightValue(const PiaItem& wanted, const Difference& change);

    /// Puts the table in order when all changes were made; `gaps` when styles were removed.
    void finish(bool gaps);

private:
    std::string styleFault(const PiaItem& name) const;

    ChangeTarget& target_;
    /// The colours of each style.
    std::map<const PiaBlock*, std::vector<int>> sharing_;
    /// The colours that get each change.
    std::map<std::wstring, std::set<int>> doings_;
    std::set<std::wstring> styleNames_;
    std::optional<std::vector<double>> weights_;
    /// Styles of colours were given other names.
    bool renamed_ = false;
};

}  // namespace platen

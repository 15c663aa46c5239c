#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include <platen/edit_apply.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "edit/change_target.h"
#include "edit/table_changes.h"
#include "inspect/compare_blocks.h"
#include "inspect/compare_words.h"
#include "inspect/item_values.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

using Change = Difference::Change;
using Kind = DifferenceStep::Kind;

constexpr std::wstring_view nameKey = L"name";
constexpr std::wstring_view colorKey = L"color";
constexpr std::wstring_view modeColorKey = L"mode_color";
constexpr std::wstring_view lineWeightKey = L"lineweight";

/// When a change is made among the others: styles come before colours that name them, and go after
/// those that named them; line weights come before styles that choose from them.
int rankOf(const Difference& change) {
    if (change.place.front().name == PlotStyleTableKeys::lineWeights.text()) {
        return 0;
    }
    const bool isEntry = change.place.back().kind == Kind::Entry;
    switch (change.change) {
        case Change::Added:
            return isEntry ? 1 : 2;
        case Change::Changed:
            return 3;
        case Change::Removed:
            break;
    }
    return isEntry ? 5 : 4;
}

class Applier {
public:
    Applier(PiaBlock& root, const std::vector<Difference>& changes)
        : target_(root),
          none_(target_.meaning().family()),
          changes_(changes),
          table_(target_, changes) {}

    ApplyResult run() {
        ApplyResult result;
        result.changes.resize(changes_.size());
        std::vector<std::size_t> order;
        for (std::size_t index = 0; index < changes_.size(); ++index) {
            if (isWhole(changes_[index])) {
                order.push_back(index);
            } else {
                result.changes[index] = misfit("it says no change");
                ++result.misfits;
            }
        }
        std::ranges::stable_sort(order, {}, [&](std::size_t index) {
            const Difference& change = changes_[index];
            const int rank = rankOf(change);
            // The last of a name goes first.
            const auto turn = static_cast<std::ptrdiff_t>(change.place.back().number);
            return std::pair(rank, rank == 5 ? -turn : 0);
        });
        for (const std::size_t index : order) {
            AppliedChange& applied = result.changes[index];
            applied = apply(changes_[index]);
            switch (applied.fate) {
                case ChangeFate::Made:
                    ++result.made;
                    break;
                case ChangeFate::AlreadyThere:
                    ++result.alreadyThere;
                    break;
                case ChangeFate::DoesNotFit:
                    ++result.misfits;
                    break;
            }
        }
        table_.finish(gaps_);
        return result;
    }

private:
    static AppliedChange already() { return {ChangeFate::AlreadyThere, {}, {}}; }
    AppliedChange misfit(std::string reason, const PiaItem* found = nullptr) {
        AppliedChange applied{ChangeFate::DoesNotFit, std::move(reason), {}};
        if (found != nullptr) {
            applied.found = target_.meaning().completeCopy(*found);
        }
        return applied;
    }

    AppliedChange apply(const Difference& change) {
        const std::span<const DifferenceStep> place(change.place);
        const std::span<const DifferenceStep> way = place.first(place.size() - 1);
        std::string why;
        const PiaBlock* parent = target_.find(way, why);
        if (parent == nullptr) {
            return change.change == Change::Removed ? already() : misfit(std::move(why));
        }
        if (place.back().kind == Kind::Entry && target_.listAt(way).kind == ListKind::None) {
            return misfit("there is no list " + placeInWords(way));
        }
        if (std::string shared = table_.sharedFault(change); !shared.empty()) {
            return misfit(std::move(shared));
        }
        const PiaItem* item = target_.itemIn(*parent, change);
        switch (change.change) {
            case Change::Added:
                return add(change, item);
            case Change::Removed:
                return remove(change, *parent, item);
            case Change::Changed:
                break;
        }
        return set(change, item);
    }

    AppliedChange add(const Difference& change, const PiaItem* item) {
        if (item != nullptr) {
            return same(change.place, *item, *change.after)
                       ? already()
                       : misfit("there is another one: " + valueInWords(*item), item);
        }
        if (std::string why = table_.nameFault(change); !why.empty()) {
            return misfit(std::move(why));
        }
        return change.place.back().kind == Kind::Entry ? addEntry(change) : addMember(change);
    }

    AppliedChange addMember(const Difference& change) {
        PiaBlock& parent = reachFor(change);
        if (!adopt(parent, copyOf(*change.after, change.place.back().name))) {
            return misfit("the block has such an item already");
        }
        return {};
    }

    AppliedChange addEntry(const Difference& change) {
        const auto way = std::span(change.place).first(change.place.size() - 1);
        const List kind = target_.listAt(way);
        const auto& entry = static_cast<const PiaBlock&>(*change.after);
        DifferenceStep step = stepOfEntry(entry, kind);
        step.number = change.place.back().number;
        if (step != change.place.back()) {
            return misfit("the entry has another name in itself");
        }
        std::optional<std::wstring> weight;
        if (kind.kind == ListKind::Styles && change.millimetresAfter) {
            const PiaItem* chosen = entry.findItem(lineWeightKey, PiaItemType::Num);
            weight = chosen == nullptr ? std::nullopt : table_.weightValue(*chosen, change);
            if (!weight) {
                return misfit(noWeight(change));
            }
        }
        PiaBlock& list = reachFor(change);
        if (target_.countOf(list, kind, step) < step.number) {
            return misfit("there are fewer entries of that name");
        }
        const PiaBlock& added = target_.addEntry(list, kind, step, entry);
        if (weight) {
            auto* chosen = static_cast<PiaNum*>(added.findItem(lineWeightKey, PiaItemType::Num));
            chosen->value = *weight;
        }
        return {};
    }

    AppliedChange remove(const Difference& change, const PiaBlock& parent, const PiaItem* item) {
        if (item == nullptr) {
            return already();
        }
        if (!same(change.place, *item, *change.before)) {
            return misfit("it is another one here: " + valueInWords(*item), item);
        }
        if (change.place.back().kind == Kind::Member) {
            // What is left out stays so.
            const PiaItem* raw = parent.findItem(item->name, item->type);
            if (raw != item) {
                return already();
            }
            reachFor(change).removeItem(item);
            return {};
        }
        if (std::string colors = table_.colorsNaming(*item); !colors.empty()) {
            return misfit("the style is that of color " + colors, item);
        }
        const auto way = std::span(change.place).first(change.place.size() - 1);
        target_.removeEntry(reachFor(change), target_.listAt(way), change.place.back());
        gaps_ = gaps_ || target_.listAt(way).kind == ListKind::Styles;
        return {};
    }

    AppliedChange set(const Difference& change, const PiaItem* item) {
        if (item == nullptr) {
            return misfit("there is no such item");
        }
        if (change.type == PiaItemType::Block) {
            return misfit("a block has no value", item);
        }
        if (isOfStyle(change) && change.place.back().name == lineWeightKey &&
            change.millimetresBefore && change.millimetresAfter) {
            return setLineWeight(change, *item);
        }
        const bool isAfter = equalValues(*item, *change.after);
        if (isAfter || !equalValues(*item, *change.before)) {
            return isAfter ? already() : misfit(otherValue(change, *item), item);
        }
        if (std::string why = table_.nameFault(change); !why.empty()) {
            return misfit(std::move(why), item);
        }
        put(change, *change.after);
        return {};
    }

    /// A line weight is known by its millimetres, whatever its place in the list.
    AppliedChange setLineWeight(const Difference& change, const PiaItem& item) {
        const std::optional<double> was = millimetres(item, target_.meaning().lineWeights());
        const std::optional<double> is = millimetres(item, table_.weights());
        if (is == change.millimetresAfter && equalValues(item, *change.after)) {
            return already();
        }
        if (was != change.millimetresBefore) {
            return is == change.millimetresAfter ? already()
                                                 : misfit(otherValue(change, item), &item);
        }
        const std::optional<std::wstring> value = table_.weightValue(*change.after, change);
        if (!value) {
            return misfit(noWeight(change), &item);
        }
        put(change, PiaNum(lineWeightKey, *value));
        return {};
    }

    static std::string noWeight(const Difference& change) {
        return "the table's list has no lineweight of " + numberInWords(*change.millimetresAfter) +
               " mm";
    }
    /// Gives the item of the change a value.
    void put(const Difference& change, const PiaItem& value) {
        PiaBlock& parent = reachFor(change);
        const std::wstring& name = change.place.back().name;
        PiaItem* item = parent.findItem(name, change.type);
        if (item == nullptr) {
            static_cast<void>(adopt(parent, copyOf(value, name)));
            // The key stood under another name.
            if (const PiaItem* alias = target_.meaning().alias();
                alias != nullptr && std::ranges::find(parent.items, alias) != parent.items.end()) {
                target_.forgetAlias();
                parent.removeItem(alias);
            }
        } else if (change.type == PiaItemType::Bool) {
            static_cast<PiaBool*>(item)->value = static_cast<const PiaBool&>(value).value;
        } else {
            static_cast<PiaTextItem*>(item)->value =
                static_cast<const PiaTextItem&>(value).value.view();
        }
        if (isOfStyle(change) && name == nameKey && change.type == PiaItemType::Str) {
            table_.renameInIndex(change.place[1], value);
        }
    }

    /// The block of the change, with what would follow the change though nobody said so.
    PiaBlock& reachFor(const Difference& change) {
        const auto way = std::span(change.place).first(change.place.size() - 1);
        PiaBlock& parent = target_.reach(way);
        if (isOfStyle(change) && change.place.back().name == colorKey) {
            spellOut(parent, modeColorKey, PiaItemType::Num);
        }
        if (change.place.back().kind == Kind::Entry &&
            target_.listAt(way).kind == ListKind::Styles) {
            spellOut(target_.root(), PlotStyleTableKeys::aciTable.text(), PiaItemType::Block);
        }
        return parent;
    }

    void spellOut(PiaBlock& block, std::wstring_view name, PiaItemType type) {
        const PiaItem* item = target_.meaning().find(block, name, type);
        if (item != nullptr && block.findItem(name, type) == nullptr) {
            static_cast<void>(adopt(block, copyOf(*item, name)));
        }
    }

    bool same(const std::vector<DifferenceStep>& place, const PiaItem& item,
              const PiaItem& expected) const {
        if (item.type != expected.type) {
            return false;
        }
        return item.type != PiaItemType::Block
                   ? equalValues(item, expected)
                   : differencesOf(target_.meaning(), static_cast<const PiaBlock&>(item), none_,
                                   static_cast<const PiaBlock&>(expected), place,
                                   StyleMatch::ByName, 1)
                         .empty();
    }

    std::string otherValue(const Difference& change, const PiaItem& item) {
        const bool ofStyle = isOfStyle(change);
        Difference other{.place = change.place, .type = change.type};
        other.before = target_.meaning().completeCopy(item);
        other.after = change.before;
        if (change.millimetresBefore) {
            other.millimetresBefore = millimetres(item, target_.meaning().lineWeights());
            other.millimetresAfter = change.millimetresBefore;
        }
        const SidesInWords sides = sidesInWords(other, ofStyle);
        return "it is " + sides.before + ", not " + sides.after;
    }

    ChangeTarget target_;
    /// For parts of documents that the changes carry.
    const Meaning none_;
    const std::vector<Difference>& changes_;
    TableChanges table_;
    /// Styles were removed.
    bool gaps_ = false;
};

}  // namespace

ApplyResult applyChanges(PiaBlock& root, const std::vector<Difference>& changes) {
    return Applier(root, changes).run();
}

std::vector<std::string> describeMisfits(const std::vector<Difference>& changes,
                                         const ApplyResult& applied) {
    std::map<std::string, std::size_t> reasons;
    std::vector<std::pair<std::string, Comparison>> misfits;
    for (std::size_t index = 0; index < changes.size(); ++index) {
        const AppliedChange& change = applied.changes[index];
        if (change.fate == ChangeFate::DoesNotFit) {
            const auto [found, isNew] = reasons.try_emplace(change.reason, misfits.size());
            if (isNew) {
                misfits.emplace_back(change.reason, Comparison());
            }
            misfits[found->second].second.differences.push_back(changes[index]);
        }
    }
    std::vector<std::string> lines;
    for (const auto& [reason, comparison] : misfits) {
        for (std::string& line : describe(comparison)) {
            line.append(": ").append(reason);
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

}  // namespace platen

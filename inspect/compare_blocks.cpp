#include "inspect/compare_blocks.h"

#include <map>
#include <string_view>
#include <utility>

#include "inspect/item_values.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

using Kind = DifferenceStep::Kind;

bool isAlike(const PiaItem& left, const PiaItem& right) {
    return left.type == right.type && left.name.view() == right.name.view();
}

class BlockComparer {
public:
    BlockComparer(const Meaning& before, const Meaning& after, std::vector<DifferenceStep> place,
                  StyleMatch match, std::size_t most)
        : before_(before), after_(after), place_(std::move(place)), match_(match), most_(most) {}

    std::vector<Difference> run(const PiaBlock& before, const PiaBlock& after) {
        if (enter(before, after)) {
            finish();
        }
        return std::move(differences_);
    }

private:
    /// Items of one place; null where there is none.
    struct Pair {
        const PiaItem* before;
        const PiaItem* after;
        /// Where it is no member: the step of the entry.
        std::optional<DifferenceStep> step{};
    };
    struct Level {
        std::vector<Pair> pairs;
        std::size_t next = 0;
    };

    bool enter(const PiaBlock& before, const PiaBlock& after) {
        if (differences_.size() >= most_) {
            return false;
        }
        levels_.push_back({pairsOf(before, after)});
        return true;
    }

    void finish() {
        while (!levels_.empty() && differences_.size() < most_) {
            Level& level = levels_.back();
            if (level.next == level.pairs.size()) {
                levels_.pop_back();
                if (!levels_.empty()) {
                    place_.pop_back();
                }
                continue;
            }
            const Pair& pair = level.pairs[level.next++];
            if (pair.before == nullptr || pair.after == nullptr) {
                record(pair);
            } else if (pair.before->type == PiaItemType::Block) {
                place_.push_back(stepOf(pair));
                enter(static_cast<const PiaBlock&>(*pair.before),
                      static_cast<const PiaBlock&>(*pair.after));
            } else if (!equalValues(*pair.before, *pair.after)) {
                record(pair);
            }
        }
    }

    static DifferenceStep stepOf(const Pair& pair) {
        const PiaItem& item = pair.before != nullptr ? *pair.before : *pair.after;
        return pair.step ? *pair.step : DifferenceStep{.name = item.name.str()};
    }

    std::vector<Pair> pairsOf(const PiaBlock& before, const PiaBlock& after) const {
        // Both trees are of one family, or their lists are no counterparts.
        const List list =
            before_.family() == after_.family() ? listAt(before_.family(), place_) : List();
        if (list.kind == ListKind::Styles && match_ != StyleMatch::ByName) {
            return colorPairs();
        }
        std::vector<Pair> pairs;
        if (list.kind != ListKind::None) {
            addEntries(entriesOf(before, list), entriesOf(after, list), pairs);
        }
        addMembers(before, after, list.kind != ListKind::None, pairs);
        return pairs;
    }

    std::vector<Pair> colorPairs() const {
        std::vector<Pair> pairs;
        for (std::size_t color = 0; color < CAciTable::count; ++color) {
            pairs.push_back({before_.styleOf(color), after_.styleOf(color),
                             DifferenceStep{.kind = Kind::Color, .number = color + 1}});
        }
        return pairs;
    }

    static void addEntries(std::vector<ListEntry> before, std::vector<ListEntry> after,
                           std::vector<Pair>& pairs) {
        std::map<std::tuple<std::wstring_view, std::optional<PiaItemType::Value>, std::size_t>,
                 const PiaBlock*>
            others;
        const auto keyOf = [](const DifferenceStep& step) {
            return std::tuple(std::wstring_view(step.name), step.valueType, step.number);
        };
        for (const ListEntry& entry : after) {
            others.emplace(keyOf(entry.step), entry.block);
        }
        for (ListEntry& entry : before) {
            const auto other = others.find(keyOf(entry.step));
            const PiaBlock* counterpart = nullptr;
            if (other != others.end()) {
                counterpart = std::exchange(other->second, nullptr);
            }
            pairs.push_back({entry.block, counterpart, std::move(entry.step)});
        }
        for (ListEntry& entry : after) {
            if (others.find(keyOf(entry.step))->second != nullptr) {
                pairs.push_back({nullptr, entry.block, entry.step});
            }
        }
    }

    /// The items that blocks have by their names; the blocks of a list are its entries.
    void addMembers(const PiaBlock& before, const PiaBlock& after, bool isList,
                    std::vector<Pair>& pairs) const {
        pairs.reserve(pairs.size() + before.items.size());
        const auto counts = [&](const PiaItem& item) {
            return !(isList && item.type == PiaItemType::Block) && isCompared(item);
        };
        const auto missingBefore = before_.missingIn(before);
        const auto missingAfter = after_.missingIn(after);
        bool isInStep = before.items.size() == after.items.size();
        for (std::size_t place = 0; place < before.items.size(); ++place) {
            const PiaItem& item = *before.items[place];
            const bool stands = place < after.items.size() && isAlike(item, *after.items[place]);
            isInStep = isInStep && stands;
            if (!counts(item) || before_.isAlias(item)) {
                continue;
            }
            const PiaItem* other = stands && !after_.isAlias(*after.items[place])
                                       ? after.items[place]
                                       : after_.find(after, item.name, item.type);
            pairs.push_back({&item, other});
        }
        for (const std::unique_ptr<PiaItem>& item : missingBefore) {
            if (counts(*item)) {
                pairs.push_back({item.get(), after_.find(after, item->name, item->type)});
            }
        }
        if (isInStep && missingAfter.empty()) {
            return;
        }
        const auto addIfNew = [&](const PiaItem& item) {
            if (counts(item) && !after_.isAlias(item) &&
                before_.find(before, item.name, item.type) == nullptr) {
                pairs.push_back({nullptr, &item});
            }
        };
        for (const PiaItem* item : after.items) {
            addIfNew(*item);
        }
        for (const std::unique_ptr<PiaItem>& item : missingAfter) {
            addIfNew(*item);
        }
    }

    /// Leaves out what matching styles by their colours has taken into account.
    bool isCompared(const PiaItem& item) const {
        if (match_ == StyleMatch::ByName) {
            return true;
        }
        const bool through = match_ == StyleMatch::ThroughColors;
        if (place_.empty()) {
            return item.name != PlotStyleTableKeys::aciTable.text() &&
                   !(through && item.name == L"aci_table_available");
        }
        return !through || place_.size() != 2 || place_.back().kind != Kind::Color ||
               (item.name != L"name" && item.name != L"localized_name");
    }

    void record(const Pair& pair) {
        Difference difference;
        difference.change = pair.before == nullptr  ? Difference::Change::Added
                            : pair.after == nullptr ? Difference::Change::Removed
                                                    : Difference::Change::Changed;
        difference.place = place_;
        difference.place.push_back(stepOf(pair));
        difference.type = (pair.before != nullptr ? pair.before : pair.after)->type;
        if (pair.before != nullptr) {
            difference.before = before_.completeCopy(*pair.before);
            difference.millimetresBefore = weightIn(before_, *pair.before);
        }
        if (pair.after != nullptr) {
            difference.after = after_.completeCopy(*pair.after);
            difference.millimetresAfter = weightIn(after_, *pair.after);
        }
        differences_.push_back(std::move(difference));
    }

    /// The line weight that a style or its key stands for.
    std::optional<double> weightIn(const Meaning& meaning, const PiaItem& item) const {
        constexpr std::wstring_view key = L"lineweight";
        const bool inStyles = meaning.family() == DocumentFamily::Table && !place_.empty() &&
                              place_.front().name == PlotStyleTableKeys::styles.text();
        if (inStyles && place_.size() == 2 && item.name == key) {
            return millimetres(item, meaning.lineWeights());
        }
        if (inStyles && place_.size() == 1 && item.type == PiaItemType::Block) {
            const PiaItem* weight =
                static_cast<const PiaBlock&>(item).findItem(key, PiaItemType::Num);
            return weight == nullptr ? std::nullopt : millimetres(*weight, meaning.lineWeights());
        }
        return std::nullopt;
    }

    const Meaning& before_;
    const Meaning& after_;
    std::vector<DifferenceStep> place_;
    const StyleMatch match_;
    const std::size_t most_;
    std::vector<Level> levels_;
    std::vector<Difference> differences_;
};

}  // namespace

StyleMatch styleMatchOf(const Meaning& before, const Meaning& after) {
    if (before.hasStylePerColor() && after.hasStylePerColor()) {
        return StyleMatch::ByColor;
    }
    const bool oneIsByColor = before.hasStylePerColor() || after.hasStylePerColor();
    return oneIsByColor && before.hasColors() && after.hasColors() ? StyleMatch::ThroughColors
                                                                   : StyleMatch::ByName;
}

std::vector<Difference> differencesOf(const Meaning& before, const PiaBlock& beforeBlock,
                                      const Meaning& after, const PiaBlock& afterBlock,
                                      std::vector<DifferenceStep> place, StyleMatch match,
                                      std::size_t most) {
    return BlockComparer(before, after, std::move(place), match, most).run(beforeBlock, afterBlock);
}

}  // namespace platen

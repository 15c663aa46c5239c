#include "edit/change_target.h"

#include <algorithm>
#include <utility>

#include "inspect/compare_words.h"
#include "inspect/item_values.h"
#include "plotstyle/index_name.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

using Kind = DifferenceStep::Kind;

}  // namespace

const PiaBlock* ChangeTarget::follow(const PiaBlock& block, std::span<const DifferenceStep> way,
                                     std::size_t index, std::string& why) {
    const DifferenceStep& step = way[index];
    const PiaBlock* next = nullptr;
    if (step.kind == Kind::Member) {
        next = static_cast<const PiaBlock*>(meaning_.find(block, step.name, PiaItemType::Block));
    } else if (const List list = listAt(way.first(index)); list.kind == ListKind::None) {
        why = "there is no list " + placeInWords(way.first(index));
        return nullptr;
    } else if (step.kind == Kind::Entry) {
        const Entries& entries = entriesIn(block, list);
        const auto found = entries.blocks.find(keyOf(step));
        next = found == entries.blocks.end() ? nullptr : found->second;
    } else if (list.kind == ListKind::Styles && meaning_.hasColors() && step.number > 0 &&
               step.number <= CAciTable::count) {
        next = meaning_.styleOf(step.number - 1);
    } else {
        why = "the table does not say which styles colors have";
        return nullptr;
    }
    if (next == nullptr) {
        why = "there is no " + placeInWords(way.first(index + 1));
    }
    return next;
}

const PiaBlock* ChangeTarget::find(std::span<const DifferenceStep> way, std::string& why) {
    const PiaBlock* block = &root_;
    for (std::size_t index = 0; index < way.size() && block != nullptr; ++index) {
        block = follow(*block, way, index, why);
    }
    return block;
}

PiaBlock& ChangeTarget::reach(std::span<const DifferenceStep> way) {
    PiaBlock* block = &root_;
    std::string why;
    for (std::size_t index = 0; index < way.size(); ++index) {
        const PiaBlock* next = follow(*block, way, index, why);
        if (way[index].kind == Kind::Member) {
            if (block->findItem(way[index].name, PiaItemType::Block) == nullptr) {
                static_cast<void>(adopt(*block, copyOf(*next, next->name)));
            }
            next = static_cast<PiaBlock*>(block->findItem(way[index].name, PiaItemType::Block));
        }
        // It is in the tree, which is this object's to change.
        block = const_cast<PiaBlock*>(next);
    }
    return *block;
}

const PiaItem* ChangeTarget::itemIn(const PiaBlock& parent, const Difference& change) {
    const std::span<const DifferenceStep> place(change.place);
    if (place.back().kind == Kind::Member) {
        return meaning_.find(parent, place.back().name, change.type);
    }
    std::string why;
    return follow(parent, place, place.size() - 1, why);
}

ChangeTarget::Entries& ChangeTarget::entriesIn(const PiaBlock& list, const List& kind) {
    const auto [found, isNew] = lists_.try_emplace(&list);
    if (isNew) {
        for (ListEntry& entry : entriesOf(list, kind)) {
            found->second.blocks.emplace(keyOf(entry.step), entry.block);
        }
        found->second.nextNumber = list.items.size();
    }
    return found->second;
}

std::size_t ChangeTarget::countOf(PiaBlock& list, const List& kind, const DifferenceStep& step) {
    const Entries& entries = entriesIn(list, kind);
    const auto first = entries.blocks.lower_bound({step.name, step.valueType, 0});
    std::size_t count = 0;
    for (auto entry = first;
         entry != entries.blocks.end() && std::get<0>(entry->first) == step.name &&
         std::get<1>(entry->first) == step.valueType;
         ++entry) {
        ++count;
    }
    return count;
}

PiaBlock& ChangeTarget::addEntry(PiaBlock& list, const List& kind, const DifferenceStep& step,
                                 const PiaBlock& entry) {
    Entries& entries = entriesIn(list, kind);
    std::unique_ptr<PiaItem> copy;
    PiaBlock* added = nullptr;
    do {
        copy = copyOf(entry, std::to_wstring(entries.nextNumber++));
        added = static_cast<PiaBlock*>(copy.get());
    } while (!adopt(list, std::move(copy)));
    entries.blocks.insert_or_assign(keyOf(step), added);
    return *added;
}

void ChangeTarget::removeEntry(PiaBlock& list, const List& kind, const DifferenceStep& step) {
    Entries& entries = entriesIn(list, kind);
    const auto found = entries.blocks.find(keyOf(step));
    if (found != entries.blocks.end()) {
        list.removeItem(found->second);
        entries.blocks.erase(found);
    }
}

void ChangeTarget::renumberStyles() {
    auto* list = static_cast<PiaBlock*>(
        root_.findItem(PlotStyleTableKeys::styles.text(), PiaItemType::Block));
    if (list == nullptr) {
        return;
    }
    constexpr std::size_t anyNumber = PiaLimits{}.items;
    std::vector<std::pair<std::size_t, PiaItem*>> numbered;
    for (PiaItem* item : list->items) {
        std::size_t number = 0;
        if (item->type != PiaItemType::Block ||
            !plot_style::parseIndex(item->name, anyNumber, number)) {
            return;
        }
        numbered.emplace_back(number, item);
    }
    std::ranges::sort(numbered);
    // From the first gap on, each number is free once the style before it has moved.
    for (std::size_t place = 0; place < numbered.size(); ++place) {
        PiaItem* const item = numbered[place].second;
        if (numbered[place].first != place) {
            std::unique_ptr<PiaItem> moved = copyOf(*item, std::to_wstring(place));
            list->removeItem(item);
            static_cast<void>(adopt(*list, std::move(moved)));
        }
    }
}

}  // namespace platen

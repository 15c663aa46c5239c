#include "edit/table_tree.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <platen/inspect.h>
#include <platen/utcore.h>
#include "plotstyle/index_name.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

/// The same item under another name; a block without its content.
std::unique_ptr<PiaItem> copyOf(const PiaItem& item, std::wstring_view name) {
    switch (item.type) {
        case PiaItemType::Bool:
            return std::make_unique<PiaBool>(name, static_cast<const PiaBool&>(item).value);
        case PiaItemType::Str:
            return std::make_unique<PiaStr>(name, static_cast<const PiaStr&>(item).value.view());
        case PiaItemType::Num:
            return std::make_unique<PiaNum>(name, static_cast<const PiaNum&>(item).value.view());
        case PiaItemType::Bin:
            return std::make_unique<PiaBin>(name, static_cast<const PiaBin&>(item).value.view());
        case PiaItemType::Block:
            break;
    }
    return std::make_unique<PiaBlock>(name);
}

/// What the file says of a number.
std::wstring_view textOf(const PiaItem& number) {
    return static_cast<const PiaNum&>(number).value.view();
}

/// True when both say the same, however numbers are spelled: to the digits that a file has.
bool sameValue(const PiaItem& before, const PiaItem& now) {
    switch (before.type) {
        case PiaItemType::Bool:
            return static_cast<const PiaBool&>(before).value ==
                   static_cast<const PiaBool&>(now).value;
        case PiaItemType::Num: {
            const std::wstring_view old = textOf(before);
            const std::wstring_view fresh = textOf(now);
            double real = 0;
            std::int32_t left = 0;
            std::int32_t right = 0;
            if (fresh.find(L'.') != std::wstring_view::npos) {
                return ut::scanDouble(old, real) && ut::formatFixed(real, -1) == fresh;
            }
            return ut::scanInt(old, left) && ut::scanInt(fresh, right) && left == right;
        }
        case PiaItemType::Block:
            return false;
        default:
            return static_cast<const PiaTextItem&>(before).value.view() ==
                   static_cast<const PiaTextItem&>(now).value.view();
    }
}

class Merger {
public:
    Merger(const CPlotStyleTable& table, std::span<const std::size_t> origins)
        : table_(table), origins_(origins) {}

    TreeMerge merge(const PiaBlock& before, PiaBlock& after) {
        PiaBlock now(L"");
        if (!table_.writeToBlock(now)) {
            return TreeMerge::Failed;
        }
        rememberNames(before);
        for (const PiaItem* item : before.items) {
            mergeTop(*item, now, after);
        }
        for (const PiaItem* item : now.items) {
            if (before.findItem(item->name.view(), item->type) == nullptr && isNeeded(*item)) {
                addWhole(*item, item->name.view(), after);
                changed_ = true;
            }
        }
        return failed_ ? TreeMerge::Failed : changed_ ? TreeMerge::Changed : TreeMerge::Same;
    }

private:
    void rememberNames(const PiaBlock& before) {
        // The tree is that of a table, which has styles.
        const PiaItem& styles =
            *before.findItem(PlotStyleTableKeys::styles.text(), PiaItemType::Block);
        for (PiaWalk walk(static_cast<const PiaBlock&>(styles)); walk.next();) {
            if (!walk.isEnd() && walk.item().type == PiaItemType::Str &&
                walk.item().name == L"name") {
                names_.insert(static_cast<const PiaStr&>(walk.item()).value);
            }
        }
    }

    /// A colour may spell the name of its style in capitals of its own.
    bool namesSameStyle(const PiaItem& before, const PiaItem& now) const {
        if (before.type != PiaItemType::Str) {
            return false;
        }
        const std::wstring& old = static_cast<const PiaStr&>(before).value;
        return !names_.contains(old) &&
               ut::equalNoCase(old, static_cast<const PiaStr&>(now).value.view());
    }

    void mergeTop(const PiaItem& item, const PiaBlock& now, PiaBlock& after) {
        const std::wstring_view name = item.name.view();
        const PiaItem* fresh = now.findItem(name, item.type);
        if (fresh == nullptr) {
            addWhole(item, name, after);
        } else if (item.type != PiaItemType::Block) {
            addNewer(item, *fresh, after, L"0");
        } else if (name == PlotStyleTableKeys::styles.text()) {
            mergeStyles(static_cast<const PiaBlock&>(item), addBlock(after, name));
        } else {
            mergeNumbered(static_cast<const PiaBlock&>(item), static_cast<const PiaBlock&>(*fresh),
                          addBlock(after, name));
        }
    }

    /// What the file left out says what the reader makes of it.
    bool isNeeded(const PiaItem& item) const {
        const std::wstring_view name = item.name.view();
        if (name == PlotStyleTableKeys::aciTable.text()) {
            return !hasStylePerColour(table_);
        }
        if (name == PlotStyleTableKeys::lineWeights.text()) {
            const CCustomLineweightTable standard;
            for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
                if (table_.customLineweights()[index] != standard[index]) {
                    return true;
                }
            }
            return false;
        }
        return name != L"custom_lineweight_display_units" ||
               table_.customLineweightDisplayUnits() != 0;
    }

    void mergeStyles(const PiaBlock& before, PiaBlock& after) {
        std::vector<const PiaBlock*> blocks(before.items.size());
        bool inPlace = origins_.size() == blocks.size();
        for (const PiaItem* item : before.items) {
            std::size_t number = 0;
            if (item->type == PiaItemType::Block &&
                plot_style::parseIndex(item->name.view(), blocks.size(), number)) {
                blocks[number] = static_cast<const PiaBlock*>(item);
            }
        }
        for (std::size_t place = 0; place < origins_.size(); ++place) {
            inPlace = inPlace && origins_[place] == place;
        }
        if (inPlace) {
            for (const PiaItem* item : before.items) {
                std::size_t number = 0;
                static_cast<void>(plot_style::parseIndex(item->name.view(), blocks.size(), number));
                mergeStyle(static_cast<const PiaBlock*>(item), number, item->name.view(), after);
            }
            return;
        }
        changed_ = true;
        for (std::size_t place = 0; place < origins_.size(); ++place) {
            const std::size_t origin = origins_[place];
            mergeStyle(origin < blocks.size() ? blocks[origin] : nullptr, place,
                       std::to_wstring(place), after);
        }
    }

    /// `before` is null for a style that the file does not have.
    void mergeStyle(const PiaBlock* before, std::size_t place, std::wstring_view name,
                    PiaBlock& after) {
        const CPlotStyle& style = *table_.style(place);
        const bool hadModeColor =
            before != nullptr && before->findItem(L"mode_color", PiaItemType::Num) != nullptr;
        PiaBlock now(L"");
        if (!style.write(now, 0, hadModeColor || style.mode_color() != style.color())) {
            failed_ = true;
            return;
        }
        const auto& fresh = static_cast<const PiaBlock&>(*now.items.front());
        PiaBlock& block = addBlock(after, name);
        if (before != nullptr) {
            const std::wstring_view color = textOf(*fresh.findItem(L"color", PiaItemType::Num));
            for (const PiaItem* item : before->items) {
                const PiaItem* newer = item->type == PiaItemType::Block
                                           ? nullptr
                                           : fresh.findItem(item->name.view(), item->type);
                if (newer == nullptr) {
                    addWhole(*item, item->name.view(), block);
                } else {
                    addNewer(*item, *newer, block, color);
                }
            }
        }
        for (const PiaItem* item : fresh.items) {
            if (block.findItem(item->name.view(), item->type) == nullptr) {
                addWhole(*item, item->name.view(), block);
                changed_ = true;
            }
        }
    }

    /// Entries are the same by their number, however it is spelled.
    void mergeNumbered(const PiaBlock& before, const PiaBlock& now, PiaBlock& after) {
        for (const PiaItem* item : before.items) {
            std::size_t number = 0;
            const bool isEntry =
                plot_style::parseIndex(item->name.view(), now.items.size(), number) &&
                now.items[number]->type == item->type;
            if (isEntry && namesSameStyle(*item, *now.items[number])) {
                addWhole(*item, item->name.view(), after);
            } else if (isEntry) {
                addNewer(*item, *now.items[number], after, {});
            } else {
                addWhole(*item, item->name.view(), after);
            }
        }
    }

    /// `passedOver` is what the reader makes of an optional number that is none; such a value stays
    /// until there is a number to replace it.
    void addNewer(const PiaItem& before, const PiaItem& now, PiaBlock& after,
                  std::wstring_view passedOver) {
        std::int32_t number = 0;
        const bool same =
            sameValue(before, now) || (now.type == PiaItemType::Num && textOf(now) == passedOver &&
                                       !ut::scanInt(textOf(before), number));
        changed_ = changed_ || !same;
        add(copyOf(same ? before : now, before.name.view()), after);
    }

    /// With all that is in it, however deep.
    void addWhole(const PiaItem& item, std::wstring_view name, PiaBlock& after) {
        if (item.type != PiaItemType::Block) {
            add(copyOf(item, name), after);
            return;
        }
        std::vector<PiaBlock*> open{&addBlock(after, name)};
        for (PiaWalk walk(static_cast<const PiaBlock&>(item)); walk.next();) {
            const PiaItem& reached = walk.item();
            if (walk.isEnd()) {
                open.pop_back();
            } else if (reached.type == PiaItemType::Block) {
                open.push_back(&addBlock(*open.back(), reached.name.view()));
            } else {
                add(copyOf(reached, reached.name.view()), *open.back());
            }
        }
    }

    static PiaBlock& addBlock(PiaBlock& after, std::wstring_view name) {
        auto block = std::make_unique<PiaBlock>(name);
        PiaBlock& added = *block;
        add(std::move(block), after);
        return added;
    }

    /// Names are those of a sound tree, in which none comes twice.
    static void add(std::unique_ptr<PiaItem> item, PiaBlock& after) {
        if (after.addItem(item.get())) {
            static_cast<void>(item.release());
        }
    }

    const CPlotStyleTable& table_;
    std::span<const std::size_t> origins_;
    /// Of the styles in the file.
    std::set<std::wstring, std::less<>> names_;
    bool changed_ = false;
    bool failed_ = false;
};

}  // namespace

TreeMerge mergeTable(const PiaBlock& before, const CPlotStyleTable& table,
                     std::span<const std::size_t> origins, PiaBlock& after) {
    return Merger(table, origins).merge(before, after);
}

}  // namespace platen

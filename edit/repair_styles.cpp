#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "edit/repair_documents.h"
#include "plotstyle/style_keys.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

constexpr std::size_t colours = CAciTable::count;

std::wstring folded(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ut::toLower);
    return lower;
}

std::wstring textIn(const PiaBlock* block, std::wstring_view name) {
    std::wstring text;
    return block != nullptr && block->getString(text, name) ? text : std::wstring();
}

CPlotStyle styleNamed(const std::wstring& name) {
    CPlotStyle style;
    style.updateName(name.c_str());
    return style;
}

class TableRepair {
public:
    TableRepair(PiaBlock& root, PiaKind& header, TreeRepair& repair)
        : root_(root), header_(header), repair_(repair) {}

    bool mend() {
        for (const PiaKey key : {PlotStyleTableKeys::styles, PlotStyleTableKeys::aciTable,
                                 PlotStyleTableKeys::lineWeights}) {
            repair_.mendNameOf(root_, key.text(), {});
        }
        styles_ = blockIn(root_, PlotStyleTableKeys::styles.text());
        if (styles_ == nullptr || styles_->items.empty()) {
            return false;
        }
        mendSettings();
        return mendStyles() && mendColours() && mendLineWeights();
    }

private:
    static std::wstring pathOf(PiaKey list, std::size_t index) {
        return joined(std::wstring(list.text()), std::to_wstring(index));
    }

    PiaBlock* aci() const { return blockIn(root_, PlotStyleTableKeys::aciTable.text()); }

    PiaBool* flag() const {
        return static_cast<PiaBool*>(root_.findItem(L"aci_table_available", PiaItemType::Bool));
    }

    void mendSettings() {
        const bool hasColours = header_ == PiaKind::Ctb || aci() != nullptr;
        const std::unique_ptr<CPlotStyleTable> defaults(
            CPlotStyleTable::create(hasColours, nullptr));
        repair_.mendNode<CPlotStyleTable>(root_, {}, *defaults);
        if (header_ != PiaKind::Ctb || flag() == nullptr || flag()->value) {
            return;
        }
        // A table of colours that says it has none: one of the two is damaged.
        if (aci() != nullptr || styles_->items.size() >= colours) {
            repair_.assume(RepairCode::ValueDefault, *flag(), L"aci_table_available", L"FALSE",
                           L"TRUE");
            flag()->value = true;
        } else {
            repair_.assume(RepairCode::KindByFlag, *flag(), L"aci_table_available", L"CTB", L"STB");
            header_ = PiaKind::Stb;
        }
    }

    /// Each colour has the style of its own place.
    bool isByColour() const {
        return header_ == PiaKind::Ctb && flag() != nullptr && flag()->value;
    }

    bool mendStyles() {
        const std::size_t count =
            isByColour() ? std::max(colours, styles_->items.size()) : styles_->items.size();
        const std::wstring path(PlotStyleTableKeys::styles.text());
        if (!repair_.numberEntries(*styles_, PiaItemType::Block, count, path)) {
            return false;
        }
        closeGaps(path);
        for (std::size_t index = 0; index < styles_->items.size(); ++index) {
            auto& block = static_cast<PiaBlock&>(*styles_->items[index]);
            std::wstring name = textIn(&block, L"localized_name");
            if (name.empty()) {
                name = nameFor(
                    static_cast<std::size_t>(std::wcstoul(block.name.c_str(), nullptr, 10)));
            }
            repair_.mendNode<CPlotStyle>(block, joined(path, block.name), styleNamed(name));
        }
        return !styles_->items.empty();
    }

    /// The name of a style that has none.
    std::wstring nameFor(std::size_t index) const {
        const std::wstring number = std::to_wstring(index);
        const std::wstring named = isByColour() ? textIn(aci(), number) : std::wstring();
        const std::wstring beginning = isByColour() ? L"Color_" : L"Style_";
        return named.empty() ? beginning + std::to_wstring(index + 1) : named;
    }

    /// Readers want a style for each number below that of the last.
    void closeGaps(const std::wstring& path) {
        const std::size_t count =
            isByColour() ? std::max(colours, styles_->items.size()) : styles_->items.size();
        for (std::size_t index = 0; index < count; ++index) {
            const std::wstring number = std::to_wstring(index);
            if (blockIn(*styles_, number) != nullptr) {
                continue;
            }
            if (isByColour()) {
                addStyle(index, nameFor(index));
            } else if (const PiaItem* last = styleAbove(count)) {
                repair_.assume(RepairCode::EntryRenumbered, *last, joined(path, number),
                               std::wstring(last->name), number);
                repair_.rename(*styles_, last, number);
            }
        }
    }

    /// A style whose number is not below the count.
    const PiaItem* styleAbove(std::size_t count) const {
        for (const PiaItem* item : styles_->items) {
            if (std::wcstoul(item->name.c_str(), nullptr, 10) >= count) {
                return item;
            }
        }
        return nullptr;
    }

    void addStyle(std::size_t index, const std::wstring& name) {
        auto block = std::make_unique<PiaBlock>(std::to_wstring(index));
        static_cast<void>(node_keys::write(styleNamed(name), *block));
        const std::wstring text = textOf(*block);
        if (const PiaItem* added = insertItem(*styles_, std::move(block), index)) {
            repair_.assume(RepairCode::StyleDefault, *added,
                           pathOf(PlotStyleTableKeys::styles, index), {}, text);
        }
    }

    bool mendColours() {
        if (flag() == nullptr || !flag()->value) {
            return true;
        }
        PiaBlock* block = aci();
        if (block == nullptr) {
            if (styles_->items.size() != colours) {
                repair_.assume(RepairCode::ColourIndexOff, *flag(), L"aci_table_available", L"TRUE",
                               L"FALSE");
                flag()->value = false;
            }
            return true;
        }
        const std::wstring path(PlotStyleTableKeys::aciTable.text());
        if (!repair_.numberEntries(*block, PiaItemType::Str, colours, path)) {
            return false;
        }
        std::set<std::wstring> names;
        for (const PiaItem* item : styles_->items) {
            names.insert(folded(textIn(static_cast<const PiaBlock*>(item), L"name")));
        }
        for (std::size_t index = 0; index < colours; ++index) {
            mendColour(*block, index, names);
        }
        return true;
    }

    void mendColour(PiaBlock& block, std::size_t index, std::set<std::wstring>& names) {
        const std::wstring number = std::to_wstring(index);
        auto* entry = static_cast<PiaStr*>(block.findItem(number, PiaItemType::Str));
        const std::wstring found = entry != nullptr ? entry->value.str() : std::wstring();
        if (entry != nullptr && names.contains(folded(found))) {
            return;
        }
        // Named tables share styles among colours: nothing says which one the colour had.
        const bool isGone = entry != nullptr && !found.empty() && !isByColour();
        const std::size_t style = isGone ? styles_->items.size() : isByColour() ? index : 0;
        if (isGone) {
            addStyle(style, found);
        }
        const std::wstring taken = textIn(blockIn(*styles_, std::to_wstring(style)), L"name");
        names.insert(folded(taken));
        if (entry != nullptr && taken == found) {
            return;
        }
        const PiaItem& place = entry != nullptr ? static_cast<const PiaItem&>(*entry) : block;
        repair_.assume(RepairCode::ColourStyle, place, pathOf(PlotStyleTableKeys::aciTable, index),
                       found, taken);
        if (entry != nullptr) {
            entry->value = taken;
        } else {
            insertItem(block, std::make_unique<PiaStr>(number, taken), index);
        }
    }

    bool mendLineWeights() {
        PiaBlock* block = blockIn(root_, PlotStyleTableKeys::lineWeights.text());
        if (block == nullptr) {
            return true;
        }
        const std::wstring path(PlotStyleTableKeys::lineWeights.text());
        constexpr std::size_t count = CCustomLineweightTable::count;
        if (!repair_.numberEntries(*block, PiaItemType::Num, count, path)) {
            return false;
        }
        const CPlotStyleTable defaults;
        PiaBlock model(L"");
        for (std::size_t index = 0; index < count; ++index) {
            const std::wstring place = pathOf(PlotStyleTableKeys::lineWeights, index);
            static_cast<void>(defaults.writeCLW(model, static_cast<int>(index)));
            const std::wstring usual = textOf(*model.items[index]);
            auto* there =
                static_cast<PiaNum*>(block->findItem(std::to_wstring(index), PiaItemType::Num));
            double value = 0;
            if (there == nullptr) {
                repair_.assume(RepairCode::KeyDefault, *block, place, {}, usual);
                insertItem(*block, copyWithLines(*model.items[index], std::to_wstring(index)),
                           index);
            } else if (!ut::scanDouble(there->value.str(), value)) {
                repair_.assume(RepairCode::ValueDefault, *there, place, there->value, usual);
                there->value = usual;
            }
        }
        return true;
    }

    PiaBlock& root_;
    PiaKind& header_;
    TreeRepair& repair_;
    PiaBlock* styles_ = nullptr;
};

}  // namespace

bool mendTable(PiaBlock& root, PiaKind& header, TreeRepair& repair) {
    return TableRepair(root, header, repair).mend();
}

}  // namespace platen

#include "inspect/meaning.h"

#include <algorithm>
#include <map>
#include <tuple>

#include <platen/plotcfg.h>
#include <platen/pmp.h>
#include <platen/utcore.h>
#include "inspect/item_values.h"
#include "pia/access.h"
#include "plotcfg/document_keys.h"
#include "plotstyle/entry_names.h"
#include "plotstyle/index_name.h"
#include "plotstyle/style_keys.h"
#include "plotstyle/table_keys.h"
#include "pmp/pmp_keys.h"

namespace platen {
namespace {

constexpr std::wstring_view styleName = L"name";
constexpr std::wstring_view modeColor = L"mode_color";
constexpr std::wstring_view color = L"color";
constexpr std::wstring_view colorsAvailable = L"aci_table_available";
constexpr std::wstring_view displayUnits = L"custom_lineweight_display_units";

/// Where a document has a list of papers, and the key that names an entry.
struct PaperList {
    DocumentFamily family;
    std::array<std::wstring_view, 3> place;
    std::wstring_view nameKey;
};

constexpr std::array<PaperList, 6> paperLists{{
    {DocumentFamily::Configuration, {L"media", L"custom_papers", {}}, L"global_name"},
    {DocumentFamily::Parameters, {L"mod", L"media", L"size"}, L"name"},
    {DocumentFamily::Parameters, {L"mod", L"media", L"description"}, L"name"},
    {DocumentFamily::Parameters, {L"udm", L"media", L"size"}, L"name"},
    {DocumentFamily::Parameters, {L"udm", L"media", L"description"}, L"name"},
    {DocumentFamily::Parameters, {L"hidden", L"media", L"size"}, L"name"},
}};

PiaBlock* blockOf(const PiaBlock& parent, std::wstring_view name) {
    return static_cast<PiaBlock*>(parent.findItem(name, PiaItemType::Block));
}

bool isAt(std::span<const DifferenceStep> place, const PaperList& list) {
    const std::size_t depth = list.place.back().empty() ? 2 : 3;
    return place.size() == depth &&
           std::equal(place.begin(), place.end(), list.place.begin(),
                      [](const DifferenceStep& step, std::wstring_view name) {
                          return step.kind == DifferenceStep::Kind::Member && step.name == name;
                      });
}

const PiaBlock& nothing() {
    static const PiaBlock block{L""};
    return block;
}

/// The children by the numbers that they are named with; empty unless all are blocks numbered from
/// 0 without a gap.
std::vector<PiaBlock*> inOrder(const PiaBlock& list) {
    const std::size_t count = list.items.size();
    std::vector<PiaBlock*> blocks(count);
    for (PiaItem* item : list.items) {
        std::size_t place = 0;
        if (item->type != PiaItemType::Block || !plot_style::parseIndex(item->name, count, place) ||
            blocks[place] != nullptr) {
            return {};
        }
        blocks[place] = static_cast<PiaBlock*>(item);
    }
    return blocks;
}

}  // namespace

/// Notes what a document shows beyond the keys of its blocks.
class MissingKeys : public NodeVisitor {
public:
    explicit MissingKeys(Meaning& meaning) : meaning_(meaning) {}

    /// The node in the block of `root` with this name. One that cannot be read has no usual values.
    template <class Node>
    void note(PiaKey name) {
        const PiaBlock* block = blockOf(meaning_.root_, name.text());
        Node node;
        if (block != nullptr && node_keys::read(*block, node)) {
            levels_ = {block};
            node_keys::show(node, *this);
        }
    }

    void integer(std::wstring_view key, std::int32_t value) override {
        note(key, PiaItemType::Num, [&] { return std::make_unique<PiaNum>(key, value); });
    }
    void real(std::wstring_view key, double value) override {
        note(key, PiaItemType::Num, [&] { return std::make_unique<PiaNum>(key, value, -1); });
    }
    void flag(std::wstring_view key, bool value) override {
        note(key, PiaItemType::Bool, [&] { return std::make_unique<PiaBool>(key, value); });
    }
    void text(std::wstring_view key, const std::wstring& value) override {
        note(key, PiaItemType::Str, [&] { return std::make_unique<PiaStr>(key, value); });
    }
    void absent(std::wstring_view) override {}
    void begin(std::wstring_view key) override {
        // Entries of lists, whose names are numbers, have no keys that may be left out.
        const bool isEntry = key.front() >= L'0' && key.front() <= L'9';
        const PiaBlock* block = levels_.back();
        levels_.push_back(block == nullptr || isEntry ? nullptr : blockOf(*block, key));
    }
    void end() override { levels_.pop_back(); }

private:
    template <class Make>
    void note(std::wstring_view key, PiaItemType type, Make make) {
        const PiaBlock* block = levels_.back();
        if (block != nullptr && block->findItem(key, type) == nullptr) {
            meaning_.addMissing(*block, make());
        }
    }

    Meaning& meaning_;
    /// Null in what is not looked at.
    std::vector<const PiaBlock*> levels_;
};

DocumentFamily familyOf(const PiaBlock& root) {
    const auto has = [&](std::wstring_view name) { return blockOf(root, name) != nullptr; };
    if (has(PlotStyleTableKeys::styles.text())) {
        return DocumentFamily::Table;
    }
    if (has(L"meta") && has(L"media")) {
        return DocumentFamily::Configuration;
    }
    return has(L"meta") && has(L"mod") && has(L"udm") ? DocumentFamily::Parameters
                                                      : DocumentFamily::Other;
}

List listAt(DocumentFamily family, std::span<const DifferenceStep> place) {
    if (place.empty() || place.size() > 3 || family == DocumentFamily::Other) {
        return {};
    }
    if (place.size() == 1) {
        const std::wstring& name = place[0].name;
        if (family == DocumentFamily::Table && name == PlotStyleTableKeys::styles.text()) {
            return {ListKind::Styles, styleName};
        }
        if (family == DocumentFamily::Configuration && name == L"custom") {
            return {ListKind::Properties, styleName};
        }
        return {};
    }
    for (const PaperList& list : paperLists) {
        if (list.family == family && isAt(place, list)) {
            return {ListKind::Papers, list.nameKey};
        }
    }
    return {};
}

DifferenceStep stepOfEntry(const PiaBlock& entry, const List& list) {
    DifferenceStep step{.kind = DifferenceStep::Kind::Entry};
    if (list.kind == ListKind::Properties) {
        if (entry.items.size() == 2 && entry.items[0]->type == PiaItemType::Str &&
            ut::equalNoCase(entry.items[0]->name, styleName)) {
            PiaAccess::copy(static_cast<const PiaStr&>(*entry.items[0]).value, step.name);
            step.valueType = entry.items[1]->type;
        }
    } else if (const PiaItem* name = entry.findItem(list.nameKey, PiaItemType::Str)) {
        PiaAccess::copy(static_cast<const PiaStr*>(name)->value, step.name);
    }
    return step;
}

std::vector<ListEntry> entriesOf(const PiaBlock& list, const List& kind) {
    std::vector<PiaBlock*> blocks;
    if (kind.kind == ListKind::Styles) {
        blocks = inOrder(list);
    }
    if (blocks.empty()) {
        for (PiaItem* item : list.items) {
            if (item->type == PiaItemType::Block) {
                blocks.push_back(static_cast<PiaBlock*>(item));
            }
        }
    }
    std::vector<ListEntry> entries;
    entries.reserve(blocks.size());
    std::map<std::pair<std::wstring, std::optional<PiaItemType::Value>>, std::size_t> turns;
    for (PiaBlock* block : blocks) {
        ListEntry entry{stepOfEntry(*block, kind), block};
        entry.step.number = turns[{entry.step.name, entry.step.valueType}]++;
        entries.push_back(std::move(entry));
    }
    return entries;
}

Meaning::Meaning(const PiaBlock& root) : root_(root), family_(familyOf(root)) {
    MissingKeys missing(*this);
    switch (family_) {
        case DocumentFamily::Table:
            readTable();
            break;
        case DocumentFamily::Configuration: {
            const auto& keys = NodeKeys<CPlotCfg3>::all;
            missing.note<CMetaNode>(keys[0].name);
            missing.note<CMediaNode>(keys[1].name);
            missing.note<CIoNode>(keys[2].name);
            missing.note<CResColorMemNode>(keys[3].name);
            const PiaBlock* media = blockOf(root, keys[1].name.text());
            for (const NodeKey<CMediaNode>& key : NodeKeys<CMediaNode>::all) {
                if (key.options.alias && media->findItem(key.name.text(), key.type) == nullptr &&
                    !missingIn(*media).empty()) {
                    alias_ = media->findItem(key.options.alias->text(), key.type);
                }
            }
            break;
        }
        case DocumentFamily::Parameters: {
            const auto& keys = NodeKeys<PlotModelParam>::all;
            missing.note<CMetaNode>(keys[0].name);
            missing.note<ModNode>(keys[1].name);
            missing.note<UdmNode>(keys[2].name);
            missing.note<HiddenNode>(keys[3].name);
            break;
        }
        case DocumentFamily::Other:
            break;
    }
}

Meaning::Meaning(DocumentFamily family) : root_(nothing()), family_(family) {}

std::span<const std::unique_ptr<PiaItem>> Meaning::missingIn(const PiaBlock& block) const {
    if (missing_.empty()) {
        return {};
    }
    const auto found = missing_.find(&block);
    return found == missing_.end() ? std::span<const std::unique_ptr<PiaItem>>() : found->second;
}

const PiaItem* Meaning::find(const PiaBlock& block, std::wstring_view name,
                             PiaItemType type) const {
    const PiaItem* item = block.findItem(name, type);
    if (item != nullptr && !isAlias(*item)) {
        return item;
    }
    for (const std::unique_ptr<PiaItem>& missing : missingIn(block)) {
        if (missing->type == type && missing->name == name) {
            return missing.get();
        }
    }
    return nullptr;
}

void Meaning::readTable() {
    readStyles(*blockOf(root_, PlotStyleTableKeys::styles.text()));
    readColors();
    lineWeights_ = lineWeightsOf(root_);
    const CPlotStyleTable usual;
    if (root_.findItem(displayUnits, PiaItemType::Num) == nullptr) {
        addMissing(root_,
                   std::make_unique<PiaNum>(displayUnits, usual.customLineweightDisplayUnits()));
    }
    if (blockOf(root_, PlotStyleTableKeys::lineWeights.text()) == nullptr) {
        auto weights = std::make_unique<PiaBlock>(PlotStyleTableKeys::lineWeights.text());
        for (std::size_t place = 0; place < CCustomLineweightTable::count; ++place) {
            static_cast<void>(usual.writeCLW(*weights, static_cast<int>(place)));
        }
        addMissing(root_, std::move(weights));
    }
}

void Meaning::readStyles(const PiaBlock& list) {
    styles_ = inOrder(list);
    for (const PiaBlock* style : styles_) {
        if (style->findItem(modeColor, PiaItemType::Num) != nullptr) {
            continue;
        }
        if (const PiaItem* same = style->findItem(color, PiaItemType::Num)) {
            addMissing(*style, copyOf(*same, modeColor));
        }
    }
}

void Meaning::readColors() {
    const auto* available =
        static_cast<const PiaBool*>(root_.findItem(colorsAvailable, PiaItemType::Bool));
    if (available == nullptr || !available->value) {
        return;
    }
    const PiaBlock* index = blockOf(root_, PlotStyleTableKeys::aciTable.text());
    if (index == nullptr) {
        stylePerColor_ = styles_.size() == colors_.size();
        hasColors_ = stylePerColor_;
        if (stylePerColor_) {
            std::copy(styles_.begin(), styles_.end(), colors_.begin());
            auto names = std::make_unique<PiaBlock>(PlotStyleTableKeys::aciTable.text());
            for (std::size_t place = 0; place < styles_.size(); ++place) {
                const DifferenceStep step =
                    stepOfEntry(*styles_[place], {ListKind::Styles, styleName});
                static_cast<void>(names->addString(std::to_wstring(place), step.name));
            }
            addMissing(root_, std::move(names));
        }
        return;
    }
    if (index->items.size() != colors_.size()) {
        return;
    }
    plot_style::EntryNames names;
    std::array<bool, CAciTable::count> isSet{};
    for (const PiaItem* item : index->items) {
        std::size_t place = 0;
        if (item->type != PiaItemType::Str ||
            !plot_style::parseIndex(item->name, colors_.size(), place) || isSet[place]) {
            return;
        }
        isSet[place] = true;
        names.set(place, static_cast<const PiaStr*>(item)->value);
    }
    for (PiaBlock* style : styles_) {
        if (const PiaItem* name = style->findItem(styleName, PiaItemType::Str)) {
            names.offer(static_cast<const PiaStr*>(name)->value.view(),
                        [&](std::size_t place) { colors_[place] = style; });
        }
    }
    hasColors_ = names.waiting() == 0;
    stylePerColor_ = hasColors_ && styles_.size() == colors_.size() &&
                     std::equal(styles_.begin(), styles_.end(), colors_.begin());
}

std::vector<double> lineWeightsOf(const PiaBlock& root) {
    const CCustomLineweightTable usual;
    std::vector<double> weights;
    for (std::size_t place = 0; place < CCustomLineweightTable::count; ++place) {
        weights.push_back(usual[place]);
    }
    const PiaBlock* list = blockOf(root, PlotStyleTableKeys::lineWeights.text());
    if (list == nullptr) {
        return weights;
    }
    for (const PiaItem* item : list->items) {
        std::size_t place = 0;
        if (item->type == PiaItemType::Num &&
            plot_style::parseIndex(item->name, weights.size(), place)) {
            static_cast<void>(PiaAccess::read(
                static_cast<const PiaNum*>(item)->value,
                [&](auto digits) { return ut::scanDouble(digits, weights[place]); }));
        }
    }
    return weights;
}

std::optional<double> millimetres(const PiaItem& lineWeight, std::span<const double> weights) {
    std::int32_t place = -1;
    const bool isNumber = lineWeight.type == PiaItemType::Num &&
                          PiaAccess::read(static_cast<const PiaNum&>(lineWeight).value,
                                          [&](auto digits) { return ut::scanInt(digits, place); });
    const bool isThere = isNumber && place >= 0 && static_cast<std::size_t>(place) < weights.size();
    return isThere ? std::optional(weights[static_cast<std::size_t>(place)]) : std::nullopt;
}

std::unique_ptr<PiaItem> Meaning::completeCopy(const PiaItem& item) const {
    std::unique_ptr<PiaItem> copy = copyOf(item, item.name);
    if (item.type != PiaItemType::Block || missing_.empty()) {
        return copy;
    }
    // The copy is walked beside the item, since the copy alone may be added to.
    const auto complete = [this](const PiaBlock& block, PiaBlock& copied) {
        for (const std::unique_ptr<PiaItem>& missing : missingIn(block)) {
            static_cast<void>(adopt(copied, copyOf(*missing, missing->name)));
        }
        if (alias_ != nullptr && !missingIn(block).empty() &&
            block.findItem(alias_->name, alias_->type) == alias_) {
            static_cast<void>(copied.removeItem(copied.findItem(alias_->name, alias_->type)));
        }
    };
    std::vector<PiaBlock*> open{static_cast<PiaBlock*>(copy.get())};
    for (PiaWalk walk(static_cast<const PiaBlock&>(item)); walk.next();) {
        if (walk.item().type != PiaItemType::Block) {
            continue;
        }
        if (walk.isEnd()) {
            complete(static_cast<const PiaBlock&>(walk.item()), *open.back());
            open.pop_back();
        } else {
            open.push_back(blockOf(*open.back(), walk.item().name));
        }
    }
    complete(static_cast<const PiaBlock&>(item), *open.back());
    return copy;
}

}  // namespace platen

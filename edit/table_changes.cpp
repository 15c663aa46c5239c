#include "edit/table_changes.h"

#include <algorithm>

#include <platen/style_words.h>
#include <platen/utcore.h>
#include "inspect/compare_words.h"
#include "plotstyle/index_name.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

using Change = Difference::Change;
using Kind = DifferenceStep::Kind;

constexpr std::wstring_view nameKey = L"name";
constexpr std::wstring_view localizedNameKey = L"localized_name";

PiaBlock* blockOf(const PiaBlock& parent, PiaKey name) {
    return static_cast<PiaBlock*>(parent.findItem(name.text(), PiaItemType::Block));
}

std::wstring lowerCase(std::wstring_view text) {
    std::wstring lower(text);
    std::ranges::transform(lower, lower.begin(), ut::toLower);
    return lower;
}

/// What a change does, wherever it does it to.
std::wstring doingOf(const Difference& change) {
    std::wstring doing = std::to_wstring(static_cast<int>(change.change));
    for (const DifferenceStep& step : change.place) {
        if (step.kind != Kind::Color) {
            doing += L'/' + step.name + L':' + std::to_wstring(step.number);
        }
    }
    if (change.after && change.after->type == PiaItemType::Bool) {
        doing += static_cast<const PiaBool&>(*change.after).value ? L"=TRUE" : L"=FALSE";
    } else if (change.after && change.after->type != PiaItemType::Block) {
        doing += L'=' + static_cast<const PiaTextItem&>(*change.after).value.str();
    }
    return doing;
}

bool isOfColor(const Difference& change) {
    return change.place.size() > 1 && change.place[1].kind == Kind::Color;
}

std::wstring nameOf(const PiaBlock& style) {
    std::wstring name;
    static_cast<void>(style.getString(name, nameKey));
    return name;
}

}  // namespace

bool isWhole(const Difference& change) {
    const auto fits = [&](const std::shared_ptr<const PiaItem>& item, Change without) {
        return (change.change == without) == (item == nullptr) &&
               (item == nullptr || item->type == change.type);
    };
    return !change.place.empty() && change.place.back().kind != Kind::Color &&
           fits(change.before, Change::Added) && fits(change.after, Change::Removed) &&
           (change.place.back().kind == Kind::Member || change.type == PiaItemType::Block);
}

TableChanges::TableChanges(ChangeTarget& target, const std::vector<Difference>& changes)
    : target_(target) {
    if (target_.meaning().hasStylePerColor() || !target_.meaning().hasColors()) {
        return;
    }
    for (std::size_t color = 0; color < CAciTable::count; ++color) {
        sharing_[target_.meaning().styleOf(color)].push_back(static_cast<int>(color) + 1);
    }
    for (const Difference& change : changes) {
        if (isWhole(change) && isOfColor(change)) {
            doings_[doingOf(change)].insert(static_cast<int>(change.place[1].number));
        }
    }
}

std::string TableChanges::sharedFault(const Difference& change) {
    if (sharing_.empty() || !isOfColor(change)) {
        return {};
    }
    if (change.place.size() == 3 &&
        (change.place[2].name == nameKey || change.place[2].name == localizedNameKey)) {
        return "a style that is known by its name keeps it";
    }
    const std::set<int>& doing = doings_[doingOf(change)];
    std::vector<int> others;
    for (const int color : sharing_[target_.meaning().styleOf(change.place[1].number - 1)]) {
        if (!doing.contains(color)) {
            others.push_back(color);
        }
    }
    return others.empty() ? ""
                          : "the style is also that of color " + rangesInWords(others) +
                                ", which would change, too";
}

std::string TableChanges::styleFault(const PiaItem& name) const {
    const bool isMissing = name.type == PiaItemType::Str &&
                           !styleNames_.contains(lowerCase(static_cast<const PiaStr&>(name).value));
    return isMissing ? "there is no style " + valueInWords(name) : std::string();
}

std::string TableChanges::nameFault(const Difference& change) {
    if (change.place.front().name != PlotStyleTableKeys::aciTable.text() ||
        target_.meaning().family() != DocumentFamily::Table) {
        return {};
    }
    if (styleNames_.empty()) {
        const PiaBlock* styles = blockOf(target_.root(), PlotStyleTableKeys::styles);
        for (const PiaItem* style : styles->items) {
            if (style->type == PiaItemType::Block) {
                styleNames_.insert(lowerCase(nameOf(static_cast<const PiaBlock&>(*style))));
            }
        }
    }
    if (change.after->type != PiaItemType::Block) {
        return styleFault(*change.after);
    }
    for (const PiaItem* item : static_cast<const PiaBlock&>(*change.after).items) {
        if (std::string fault = styleFault(*item); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

std::string TableChanges::colorsNaming(const PiaItem& style) {
    const PiaBlock* styles = blockOf(target_.root(), PlotStyleTableKeys::styles);
    const PiaBlock* index = blockOf(target_.root(), PlotStyleTableKeys::aciTable);
    if (target_.meaning().family() != DocumentFamily::Table || styles == nullptr ||
        index == nullptr || std::ranges::find(styles->items, &style) == styles->items.end()) {
        return {};
    }
    const std::wstring name = nameOf(static_cast<const PiaBlock&>(style));
    std::vector<int> colors;
    for (const PiaItem* item : index->items) {
        std::size_t place = 0;
        if (item->type == PiaItemType::Str &&
            ut::equalNoCase(static_cast<const PiaStr&>(*item).value, name) &&
            plot_style::parseIndex(item->name, CAciTable::count, place)) {
            colors.push_back(static_cast<int>(place) + 1);
        }
    }
    std::ranges::sort(colors);
    return rangesInWords(colors);
}

void TableChanges::renameInIndex(const DifferenceStep& color, const PiaItem& name) {
    const PiaBlock* index = blockOf(target_.root(), PlotStyleTableKeys::aciTable);
    if (color.kind != Kind::Color || index == nullptr) {
        return;
    }
    PiaItem* entry = index->findItem(std::to_wstring(color.number - 1), PiaItemType::Str);
    if (entry != nullptr) {
        static_cast<PiaStr*>(entry)->value = static_cast<const PiaStr&>(name).value.view();
        renamed_ = true;
    }
}

const std::vector<double>& TableChanges::weights() {
    if (!weights_) {
        weights_ = lineWeightsOf(target_.root());
    }
    return *weights_;
}

std::optional<std::wstring> TableChanges::weightValue(const PiaItem& wanted,
                                                      const Difference& change) {
    const std::vector<double>& list = weights();
    if (millimetres(wanted, list) == change.millimetresAfter) {
        return std::wstring(static_cast<const PiaNum&>(wanted).value.view());
    }
    const auto found = std::ranges::find(list, *change.millimetresAfter);
    return found == list.end() ? std::nullopt
                               : std::optional(std::to_wstring(found - list.begin()));
}

void TableChanges::finish(bool gaps) {
    if (gaps && !target_.meaning().styles().empty()) {
        target_.renumberStyles();
    } else if (renamed_ && !Meaning(target_.root()).hasStylePerColor()) {
        // Names that are there twice tell no styles apart; places do.
        target_.root().removeItem(blockOf(target_.root(), PlotStyleTableKeys::aciTable));
    }
}

}  // namespace platen

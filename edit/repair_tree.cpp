#include "edit/repair_tree.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <platen/edit_items.h>
#include <platen/utcore.h>
#include "inspect/item_values.h"
#include "plotstyle/index_name.h"

namespace platen {
namespace {

std::unique_ptr<PiaItem> itemOf(PiaItemType type, std::wstring_view name, std::wstring_view text) {
    switch (type) {
        case PiaItemType::Bool:
            return std::make_unique<PiaBool>(name, ut::equalNoCase(text, L"true"));
        case PiaItemType::Str:
            return std::make_unique<PiaStr>(name, text);
        case PiaItemType::Num:
            return std::make_unique<PiaNum>(name, text);
        case PiaItemType::Bin:
            return std::make_unique<PiaBin>(name, text);
        case PiaItemType::Block:
            break;
    }
    return std::make_unique<PiaBlock>(name);
}

std::unique_ptr<PiaItem> withLine(std::unique_ptr<PiaItem> item, const PiaItem& source) {
    PiaAccess::setLine(*item, source.line());
    return item;
}

/// True when a value of an item can be that of `type`, as it was meant.
bool canBe(const PiaItem& item, PiaItemType type) {
    if (item.type == type || item.type == PiaItemType::Block || type == PiaItemType::Block) {
        return item.type == type;
    }
    const std::wstring text = textOf(item);
    switch (type) {
        case PiaItemType::Num:
            return wholeNumber(ut::encodeUtf8(text)).has_value();
        case PiaItemType::Bool:
            return ut::equalNoCase(text, L"true") || ut::equalNoCase(text, L"false");
        default:
            return type == PiaItemType::Str;
    }
}

/// True when one letter more, less or other, or two that changed places, make one of the other.
bool differInOneLetter(std::wstring_view left, std::wstring_view right) {
    if (left.size() > right.size()) {
        std::swap(left, right);
    }
    if (right.size() - left.size() > 1 || left == right) {
        return false;
    }
    const auto equal =
        static_cast<std::size_t>(std::ranges::mismatch(left, right).in1 - left.begin());
    const std::wstring_view restOfLeft = left.substr(equal);
    const std::wstring_view restOfRight = right.substr(equal);
    if (left.size() < right.size()) {
        return restOfLeft == restOfRight.substr(1);
    }
    const bool areSwapped = restOfLeft.size() > 1 && restOfLeft[0] == restOfRight[1] &&
                            restOfLeft[1] == restOfRight[0] &&
                            restOfLeft.substr(2) == restOfRight.substr(2);
    return areSwapped || restOfLeft.substr(1) == restOfRight.substr(1);
}

bool hasName(const PiaBlock& block, std::wstring_view name) {
    return std::any_of(block.items.begin(), block.items.end(),
                       [&](const PiaItem* item) { return item->name == name; });
}

bool areEqual(const PiaItem& left, const PiaItem& right) {
    if (left.type != PiaItemType::Block) {
        return textOf(left) == textOf(right);
    }
    PiaWalk walk(static_cast<const PiaBlock&>(left));
    PiaWalk other(static_cast<const PiaBlock&>(right));
    while (walk.next()) {
        if (!other.next() || walk.isEnd() != other.isEnd() ||
            walk.item().type != other.item().type || walk.item().name != other.item().name ||
            (walk.item().type != PiaItemType::Block &&
             textOf(walk.item()) != textOf(other.item()))) {
            return false;
        }
    }
    return !other.next();
}

PiaItem* named(const PiaBlock& block, std::wstring_view name) {
    const auto* found = std::find_if(block.items.begin(), block.items.end(),
                                     [&](const PiaItem* item) { return item->name == name; });
    return found == block.items.end() ? nullptr : *found;
}

std::size_t placeOf(const PiaBlock& block, const PiaItem* item) {
    return static_cast<std::size_t>(std::find(block.items.begin(), block.items.end(), item) -
                                    block.items.begin());
}

/// Where a new key stands: behind the last one there that comes before it in `model`.
std::size_t placeFor(const PiaBlock& block, const PiaBlock& model, std::wstring_view name) {
    std::size_t place = 0;
    for (const PiaItem* item : model.items) {
        if (item->name == name) {
            break;
        }
        if (const PiaItem* there = named(block, item->name)) {
            place = std::max(place, placeOf(block, there) + 1);
        }
    }
    return place;
}

std::uint64_t itemsIn(const PiaItem& item) {
    std::uint64_t count = 1;
    if (item.type == PiaItemType::Block) {
        for (PiaWalk walk(static_cast<const PiaBlock&>(item)); walk.next();) {
            count += walk.isEnd() ? 0 : 1;
        }
    }
    return count;
}

/// The number in front of an entry or behind it, whichever is free and nearest to its neighbours'.
std::optional<std::size_t> freeNumber(const PiaBlock& list, std::size_t position,
                                      const std::vector<bool>& taken) {
    const auto numberAt = [&](std::size_t place, std::size_t& number) {
        return place < list.items.size() &&
               plot_style::parseIndex(list.items[place]->name, taken.size(), number);
    };
    const auto isFree = [&](std::size_t number) { return number < taken.size() && !taken[number]; };
    std::size_t number = 0;
    if (numberAt(position + 1, number) && number > 0 && isFree(number - 1)) {
        return number - 1;
    }
    if (position > 0 && numberAt(position - 1, number) && isFree(number + 1)) {
        return number + 1;
    }
    return isFree(position) ? std::optional(position) : std::nullopt;
}

}  // namespace

PiaBlock* blockIn(const PiaBlock& parent, std::wstring_view name) {
    return static_cast<PiaBlock*>(parent.findItem(name, PiaItemType::Block));
}

std::wstring joined(const std::wstring& path, std::wstring_view name) {
    return path.empty() || name.empty() ? path + std::wstring(name) : (path + L'/').append(name);
}

std::wstring textOf(const PiaItem& item) {
    switch (item.type) {
        case PiaItemType::Bool:
            return static_cast<const PiaBool&>(item).value ? L"TRUE" : L"FALSE";
        case PiaItemType::Block: {
            std::wstring text;
            static_cast<void>(
                ut::decodeUtf8(piaBodyText(static_cast<const PiaBlock&>(item)), text));
            std::replace(text.begin(), text.end(), L'\n', L' ');
            return text;
        }
        default:
            return static_cast<const PiaTextItem&>(item).value.str();
    }
}

std::unique_ptr<PiaItem> copyWithLines(const PiaItem& item, std::wstring_view name) {
    std::unique_ptr<PiaItem> copy = withLine(copyOf(item, name), item);
    if (item.type == PiaItemType::Block) {
        PiaWalk walk(static_cast<const PiaBlock&>(item));
        for (PiaWalk other(static_cast<const PiaBlock&>(*copy)); walk.next() && other.next();) {
            PiaAccess::setLine(other.item(), walk.item().line());
        }
    }
    return copy;
}

PiaItem* insertItem(PiaBlock& parent, std::unique_ptr<PiaItem> item, std::size_t position) {
    if (!parent.addItem(item.get())) {
        return nullptr;
    }
    PiaItem* added = item.release();
    PiaAccess::moveLast(parent, std::min(position, parent.items.size() - 1));
    return added;
}

std::optional<std::uint64_t> TreeRepair::lineOf(const PiaItem& item) const {
    const std::uint32_t line = source_ == nullptr ? item.line() : source_->sourceOf(item.line());
    return node_keys::known(line);
}

void TreeRepair::assume(RepairCode code, const PiaItem& place, std::wstring path,
                        std::wstring found, std::wstring taken) {
    notes_.assume({.code = code,
                   .line = lineOf(place),
                   .path = std::move(path),
                   .found = std::move(found),
                   .taken = std::move(taken)});
}

void TreeRepair::drop(PiaBlock& parent, const PiaItem* item, const std::wstring& path,
                      RepairCode code) {
    assume(code, *item, path, textOf(*item), {});
    notes_.lose({.unit = Loss::Unit::Items,
                 .count = itemsIn(*item),
                 .line = lineOf(*item),
                 .path = path,
                 .text = textOf(*item)});
    parent.removeItem(item);
}

PiaItem* TreeRepair::rename(PiaBlock& parent, const PiaItem* item, std::wstring_view name) {
    const std::size_t position = placeOf(parent, item);
    std::unique_ptr<PiaItem> copy = copyWithLines(*item, name);
    parent.removeItem(item);
    return insertItem(parent, std::move(copy), position);
}

void TreeRepair::resolveDuplicates(PiaBlock& root) {
    if (source_ == nullptr || source_->duplicates.empty()) {
        return;
    }
    struct Twin {
        PiaBlock* parent;
        PiaItem* item;
        std::wstring path;
    };
    std::vector<Twin> twins;
    for (PiaWalk walk(root); walk.next();) {
        const auto named = source_->duplicates.find(walk.item().line());
        if (!walk.isEnd() && named != source_->duplicates.end()) {
            twins.push_back({const_cast<PiaBlock*>(&walk.parent()), &walk.item(),
                             walk.path().substr(0, walk.path().size() - walk.item().name.size()) +
                                 named->second});
        }
    }
    // Inner ones first: they go with the block that they are in.
    for (auto twin = twins.rbegin(); twin != twins.rend(); ++twin) {
        const std::wstring& name = source_->duplicates.find(twin->item->line())->second;
        const PiaItem* first = twin->parent->findItem(name, twin->item->type);
        const std::wstring place = std::to_wstring(placeOf(*twin->parent, twin->item));
        if (first != nullptr && areEqual(*first, *twin->item)) {
            assume(RepairCode::DuplicateEqual, *twin->item, twin->path, name, name);
            twin->parent->removeItem(twin->item);
        } else if (!hasName(*twin->parent, place)) {
            assume(RepairCode::EntryRenumbered, *twin->item, twin->path, name, place);
            rename(*twin->parent, twin->item, place);
        } else {
            drop(*twin->parent, twin->item, twin->path, RepairCode::DuplicateDropped);
        }
    }
}

bool TreeRepair::numberEntries(PiaBlock& list, PiaItemType type, std::size_t count,
                               const std::wstring& path) {
    // What cannot stand in the list is taken out one by one.
    constexpr std::size_t mostEntries = 4000;
    if (list.items.size() > mostEntries) {
        return false;
    }
    for (std::size_t index = 0; index < list.items.size();) {
        const PiaItem& item = *list.items[index];
        const bool isMeant =
            item.type == type || (canBe(item, type) && list.findItem(item.name, type) == nullptr);
        if (!isMeant) {
            drop(list, &item, joined(path, item.name));
            continue;
        }
        if (item.type != type) {
            assume(RepairCode::TypeWrong, item, joined(path, item.name), textOf(item),
                   textOf(item));
            std::unique_ptr<PiaItem> mended = withLine(itemOf(type, item.name, textOf(item)), item);
            list.removeItem(&item);
            insertItem(list, std::move(mended), index);
        }
        ++index;
    }
    std::vector<bool> taken(count);
    std::vector<PiaItem*> homeless;
    for (PiaItem* item : list.items) {
        std::size_t number = 0;
        if (plot_style::parseIndex(item->name, count, number) && !taken[number] &&
            item->name == std::to_wstring(number)) {
            taken[number] = true;
        } else {
            homeless.push_back(item);
        }
    }
    for (PiaItem* item : homeless) {
        const std::wstring before = joined(path, item->name);
        const std::optional<std::size_t> number = freeNumber(list, placeOf(list, item), taken);
        const std::wstring name = number ? std::to_wstring(*number) : std::wstring();
        if (!number || list.findItem(name, type) != nullptr) {
            drop(list, item, before);
            continue;
        }
        assume(RepairCode::EntryRenumbered, *item, joined(path, name), std::wstring(item->name),
               name);
        taken[*number] = true;
        rename(list, item, name);
    }
    return true;
}

bool TreeRepair::mendKey(PiaBlock& block, const PiaBlock& defaults, const PiaFinding& finding,
                         const std::wstring& path) {
    PiaBlock* parent = &block;
    const PiaBlock* model = &defaults;
    std::wstring_view rest = finding.path;
    for (std::size_t slash = rest.find(L'/'); slash != rest.npos; slash = rest.find(L'/')) {
        parent = blockIn(*parent, rest.substr(0, slash));
        model = blockIn(*model, rest.substr(0, slash));
        if (parent == nullptr || model == nullptr) {
            return false;
        }
        rest.remove_prefix(slash + 1);
    }
    const PiaItem* standard = named(*model, rest);
    if (standard == nullptr) {
        return false;
    }
    const std::wstring full = joined(path, finding.path);
    std::size_t place = placeFor(*parent, *model, rest);
    if (const PiaItem* there = parent->findItem(rest, standard->type)) {
        assume(RepairCode::ValueDefault, *there, full, textOf(*there), textOf(*standard));
        place = placeOf(*parent, there);
        parent->removeItem(there);
    } else if (takeNearest(*parent, *model, *standard, full)) {
        return true;
    } else {
        assume(RepairCode::KeyDefault, *parent, full, {}, textOf(*standard));
    }
    return insertItem(*parent, copyWithLines(*standard, rest), place) != nullptr;
}

bool TreeRepair::takeNearest(PiaBlock& block, const PiaBlock& defaults, const PiaItem& model,
                             const std::wstring& path) {
    const std::wstring_view name = model.name;
    const auto take = [&](const PiaItem& item, RepairCode code, std::wstring found,
                          std::wstring taken) {
        assume(code, item, path, std::move(found), std::move(taken));
        const std::size_t place = placeOf(block, &item);
        std::unique_ptr<PiaItem> mended =
            item.type == model.type ? copyWithLines(item, name)
                                    : withLine(itemOf(model.type, name, textOf(item)), item);
        block.removeItem(&item);
        return insertItem(block, std::move(mended), place) != nullptr;
    };
    for (const PiaItem* item : block.items) {
        if (item->name == name && canBe(*item, model.type)) {
            return take(*item, RepairCode::TypeWrong, textOf(*item), textOf(*item));
        }
    }
    for (const PiaItem* item : block.items) {
        if (!hasName(defaults, item->name) && differInOneLetter(item->name, name) &&
            canBe(*item, model.type)) {
            return take(*item, RepairCode::KeyMisspelt, std::wstring(item->name),
                        std::wstring(name));
        }
    }
    return false;
}

void TreeRepair::mendNameOf(PiaBlock& parent, std::wstring_view name, const std::wstring& path) {
    if (blockIn(parent, name) != nullptr) {
        return;
    }
    for (const PiaItem* item : parent.items) {
        if (item->type == PiaItemType::Block && differInOneLetter(item->name, name)) {
            assume(RepairCode::KeyMisspelt, *item, joined(path, name), std::wstring(item->name),
                   std::wstring(name));
            rename(parent, item, name);
            return;
        }
    }
}

}  // namespace platen

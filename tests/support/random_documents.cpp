#include "tests/support/random_documents.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

#include <platen/edit_items.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "inspect/item_values.h"
#include "tests/support/configurations.h"

namespace {

constexpr std::wstring_view listNames[] = {L"custom_papers", L"size", L"description", L"custom"};

PiaBlock* blockAt(PiaBlock& root, std::wstring_view path) {
    const PiaPlace place = piaFindPlace(root, path);
    return place.items.empty() ? nullptr : static_cast<PiaBlock*>(place.items.front());
}

/// A list whose entries may come and go. The "size" of a configuration is one paper.
bool isList(const PiaBlock& block) {
    return std::ranges::find(listNames, block.name.view()) != std::end(listNames) &&
           block.findItem(L"name", PiaItemType::Str) == nullptr;
}

std::vector<PiaBlock*> listsOf(PiaBlock& root) {
    std::vector<PiaBlock*> lists;
    for (PiaWalk walk(root); walk.next();) {
        if (walk.isEnd() || walk.item().type != PiaItemType::Block) {
            continue;
        }
        auto& block = static_cast<PiaBlock&>(walk.item());
        if (isList(block)) {
            lists.push_back(&block);
        }
    }
    return lists;
}

/// The text that names an entry of papers or properties: its first one, wherever JSON has put it.
PiaStr& nameOf(const PiaItem& entry) {
    const auto& items = static_cast<const PiaBlock&>(entry).items;
    const auto name = std::ranges::find(items, PiaItemType::Str, [](const PiaItem* item) {
        return PiaItemType::Value(item->type);
    });
    if (name == items.end()) {
        throw std::logic_error("the entry has no name");
    }
    return static_cast<PiaStr&>(**name);
}

/// The path of an item. All that is in entries of one name has one path, since their numbers say
/// nothing.
std::wstring ownPath(PiaBlock& root, const PiaWalk& walk) {
    const std::wstring path = walk.path();
    for (std::size_t at = path.find(L'/'); at != std::wstring::npos; at = path.find(L'/', at + 1)) {
        if (at + 1 < path.size() && path[at + 1] <= L'9') {
            const std::wstring entry = path.substr(0, path.find(L'/', at + 1));
            const auto& block = *blockAt(root, entry);
            return isList(*blockAt(root, path.substr(0, at)))
                       ? path.substr(0, at + 1) + nameOf(block).value
                       : entry;
        }
    }
    return path;
}

void add(PiaBlock& block, std::unique_ptr<PiaItem> item) {
    if (!platen::adopt(block, std::move(item))) {
        throw std::logic_error("the block has such an item");
    }
}

}  // namespace

std::unique_ptr<PiaBlock> copyOfTree(const PiaBlock& root) {
    return std::unique_ptr<PiaBlock>(static_cast<PiaBlock*>(platen::copyOf(root, L"").release()));
}

std::wstring RandomDocuments::word() {
    constexpr std::wstring_view letters = L"aAbz9 _-\u00e4\u20ac=/\"";
    std::wstring text;
    for (std::size_t count = below(6) + 1; count > 0; --count) {
        text += letters[below(letters.size())];
    }
    return text;
}

std::wstring RandomDocuments::number() {
    constexpr std::array<std::wstring_view, 4> parts{L"", L".5", L".250000", L".0"};
    return (oneIn(4) ? L"-" : L"") + std::to_wstring(below(300)) +
           std::wstring(parts[below(parts.size())]);
}

std::unique_ptr<PiaBlock> RandomDocuments::make(RandomKind kind) {
    switch (kind) {
        case RandomKind::Pc3:
            return makeFrom(oneIn(3) ? bareConfiguration : fullConfiguration);
        case RandomKind::Pmp:
            return makeFrom(oneIn(3) ? bareParameters : fullParameters);
        default:
            return makeTable(kind);
    }
}

std::unique_ptr<PiaBlock> RandomDocuments::makeTable(RandomKind kind) {
    const bool byColor = kind == RandomKind::Ctb || kind == RandomKind::CtbWithoutIndex;
    std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(byColor, word().c_str()));
    for (std::size_t count = byColor ? 0 : below(12); count > 0; --count) {
        table->addStyle((L"Pen " + std::to_wstring(below(40))).c_str(), -1, nullptr);
    }
    if (kind == RandomKind::StbWithIndex) {
        std::array<int, CAciTable::count> colors{};
        for (int& color : colors) {
            color = static_cast<int>(below(table->size()));
        }
        table->addACI(colors.data());
    }
    auto root = std::make_unique<PiaBlock>(L"");
    if (!table->writeToBlock(*root)) {
        throw std::logic_error("the table cannot be written");
    }
    if (kind == RandomKind::CtbWithoutIndex) {
        root->removeItem(root->findItem(L"aci_table", PiaItemType::Block));
    }
    for (const wchar_t* name : {L"custom_lineweight_table", L"custom_lineweight_display_units"}) {
        const PiaPlace place = piaFindPlace(*root, name);
        if (oneIn(4)) {
            root->removeItem(place.items.front());
        }
    }
    change(*root, L"");
    change(*root, L"again_");
    return root;
}

std::unique_ptr<PiaBlock> RandomDocuments::makeFrom(const std::string& body) {
    PiaInput input;
    if (!input.openBody(body)) {
        throw std::logic_error("the body cannot be read");
    }
    std::unique_ptr<PiaBlock> root = copyOfTree(*input.root());
    fillLists(*root);
    change(*root, L"");
    return root;
}

void RandomDocuments::fillLists(PiaBlock& root) {
    for (PiaBlock* list : listsOf(root)) {
        for (std::size_t count = list->items.empty() ? 0 : below(6); count > 0; --count) {
            const PiaItem& model = *list->items[below(list->items.size())];
            std::unique_ptr<PiaItem> entry =
                platen::copyOf(model, std::to_wstring(1000 + list->items.size()));
            // Names repeat.
            if (oneIn(2)) {
                nameOf(*entry).value = L"Entry " + std::to_wstring(below(4));
            }
            add(*list, std::move(entry));
        }
    }
}

void RandomDocuments::setValue(PiaItem& item, const PiaBlock& parent, std::wstring_view mark) {
    const bool isStyle = parent.findItem(L"lineweight", PiaItemType::Num) != nullptr;
    switch (item.type) {
        case PiaItemType::Bool:
            static_cast<PiaBool&>(item).value = oneIn(2);
            break;
        case PiaItemType::Num:
            static_cast<PiaNum&>(item).value =
                isStyle && item.name == L"lineweight" ? std::to_wstring(below(27)) : number();
            break;
        case PiaItemType::Str:
            static_cast<PiaStr&>(item).value = std::wstring(mark) + word();
            break;
        case PiaItemType::Bin:
            static_cast<PiaBin&>(item).value = oneIn(2) ? L"00fF" : L"ABCDEF01";
            break;
        case PiaItemType::Block:
            break;
    }
}

void RandomDocuments::change(PiaBlock& root, std::wstring_view mark, const Chosen& chosen) {
    const bool isTable = blockAt(root, L"plot_style") != nullptr;
    const std::size_t rarely = 2 + below(60);
    std::vector<PiaBlock*> plain;
    for (PiaWalk walk(root); walk.next();) {
        PiaItem& item = walk.item();
        if (walk.isEnd()) {
            continue;
        }
        // What says which style a colour has goes together.
        const bool isFixed = item.name == L"aci_table" || item.name == L"aci_table_available" ||
                             item.name == L"default_system_cfg";
        // Styles choose from the list of line weights: who changes it changes them.
        const bool isShared = chosen && item.name == L"custom_lineweight_table";
        if (isFixed || isShared ||
            (chosen && !chosen(ownPath(root, walk)) && item.type != PiaItemType::Block)) {
            walk.skip();
            continue;
        }
        const bool isName = item.name == L"name" || item.name == L"global_name";
        if (item.type == PiaItemType::Block) {
            const auto& block = static_cast<const PiaBlock&>(item);
            const bool isNumbered = item.name == L"custom_lineweight_table" ||
                                    item.name == L"plot_style" || walk.parent().name == L"custom";
            if (!isNumbered && !isList(block) && (!chosen || chosen(ownPath(root, walk)))) {
                plain.push_back(static_cast<PiaBlock*>(&item));
            }
        } else if (!(isTable && isName) && oneIn(rarely)) {
            setValue(item, walk.parent(), mark);
        }
    }
    plain.push_back(&root);
    for (std::size_t count = below(4); count > 0; --count) {
        PiaBlock& block = *plain[below(plain.size())];
        const std::wstring name = L"vendor_" + std::wstring(mark) + std::to_wstring(below(5));
        auto vendor = std::make_unique<PiaBlock>(name);
        add(*vendor, std::make_unique<PiaStr>(L"text", word()));
        static_cast<void>(oneIn(2) ? platen::adopt(block, std::move(vendor))
                                   : platen::adopt(block, std::make_unique<PiaNum>(
                                                              name, std::wstring_view(number()))));
    }
    for (PiaBlock* list : listsOf(root)) {
        for (std::size_t place = list->items.size(); place-- > 0;) {
            PiaItem* const entry = list->items[place];
            PiaWalk walk(root);
            while (walk.next() && &walk.item() != entry) {
            }
            const bool mayChange = !chosen || chosen(ownPath(root, walk));
            if (mayChange && oneIn(6)) {
                std::unique_ptr<PiaItem> copy = platen::copyOf(
                    *entry, std::to_wstring(2000 + list->items.size()) + std::wstring(mark));
                nameOf(*copy).value = L"New " + std::wstring(mark) + std::to_wstring(place);
                static_cast<void>(platen::adopt(*list, std::move(copy)));
            } else if (mayChange && oneIn(6)) {
                list->removeItem(entry);
            }
        }
    }
}

void RandomDocuments::respell(PiaBlock& root) {
    for (PiaWalk walk(root); walk.next();) {
        if (walk.item().type == PiaItemType::Num && oneIn(2)) {
            PiaText& value = static_cast<PiaNum&>(walk.item()).value;
            if (!platen::wholeNumber(ut::encodeUtf8(value))) {
                continue;
            }
            value = value.find(L'.') == PiaText::npos ? value.str() + L".000" : value.str() + L"0";
        } else if (walk.item().type == PiaItemType::Bin) {
            std::wstring digits = static_cast<PiaBin&>(walk.item()).value;
            std::ranges::transform(digits, digits.begin(), ut::toLower);
            static_cast<PiaBin&>(walk.item()).value = digits;
        }
    }
    // Papers of one name keep their order.
    for (PiaBlock* list : listsOf(root)) {
        std::vector<std::unique_ptr<PiaItem>> entries;
        for (const PiaItem* item : list->items) {
            entries.push_back(platen::copyOf(*item, std::to_wstring(3000 + entries.size())));
        }
        std::ranges::stable_sort(entries, {},
                                 [](const auto& entry) { return nameOf(*entry).value.str(); });
        while (!list->items.empty()) {
            list->removeItem(list->items.back());
        }
        for (std::unique_ptr<PiaItem>& entry : entries) {
            add(*list, std::move(entry));
        }
    }
}

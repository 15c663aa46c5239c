#include <cstddef>
#include <map>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <platen/inspect.h>
#include <platen/utcore.h>
#include "pia/access.h"
#include "plotcfg/document_keys.h"
#include "pmp/pmp_keys.h"

namespace platen {
namespace {

using Reason = LostItem::Reason;

const PiaBlock* blockOf(const PiaBlock* parent, std::wstring_view name) {
    return parent == nullptr
               ? nullptr
               : static_cast<const PiaBlock*>(parent->findItem(name, PiaItemType::Block));
}

/// Marks the items of a tree that a document shows.
class CarriedItems : public NodeVisitor {
public:
    explicit CarriedItems(const PiaBlock& root) : custom_(blockOf(&root, L"custom")) {
        levels_.push_back({&root, 0});
    }

    void integer(std::wstring_view key, std::int32_t) override {
        std::int32_t value = 0;
        takeNumber(key, [&](auto digits) { return ut::scanInt(digits, value); });
    }
    void real(std::wstring_view key, double) override {
        double value = 0;
        takeNumber(key, [&](auto digits) { return ut::scanDouble(digits, value); });
    }
    void flag(std::wstring_view key, bool) override { take(key, PiaItemType::Bool); }
    void text(std::wstring_view key, const std::wstring&) override { take(key, PiaItemType::Str); }
    void absent(std::wstring_view) override {}
    void begin(std::wstring_view key) override {
        // An entry of a list has a number for a name, a key never begins with a digit.
        const bool isEntry = key.front() >= L'0' && key.front() <= L'9';
        const PiaBlock* block = isEntry ? nextBlock() : takeBlock(key);
        levels_.push_back({block == custom_ ? nullptr : block, 0});
    }
    void end() override { levels_.pop_back(); }

    void carry(const PiaItem* item) {
        if (item != nullptr) {
            carried_.insert(item);
        }
    }
    bool carries(const PiaItem* item) const { return carried_.contains(item); }
    bool couldRead(const PiaItem* item) const { return !unreadable_.contains(item); }

private:
    struct Level {
        /// Null in a block that the file does not have.
        const PiaBlock* block;
        std::size_t next;
    };

    const PiaItem* take(std::wstring_view key, PiaItemType type) {
        const PiaBlock* block = levels_.back().block;
        const PiaItem* item = block == nullptr ? nullptr : block->findItem(key, type);
        carry(item);
        return item;
    }
    const PiaBlock* takeBlock(std::wstring_view key) {
        return static_cast<const PiaBlock*>(take(key, PiaItemType::Block));
    }
    template <class Scan>
    void takeNumber(std::wstring_view key, Scan scan) {
        const PiaItem* item = take(key, PiaItemType::Num);
        if (item != nullptr && !PiaAccess::read(static_cast<const PiaNum*>(item)->value, scan)) {
            unreadable_.insert(item);
        }
    }
    const PiaBlock* nextBlock() {
        Level& level = levels_.back();
        while (level.block != nullptr && level.next < level.block->items.size()) {
            const PiaItem* item = level.block->items[level.next++];
            if (item->type == PiaItemType::Block) {
                carry(item);
                return static_cast<const PiaBlock*>(item);
            }
        }
        return nullptr;
    }

    /// Its properties are no keys.
    const PiaBlock* custom_;
    std::vector<Level> levels_;
    std::unordered_set<const PiaItem*> carried_;
    std::unordered_set<const PiaItem*> unreadable_;
};

/// Of properties with one name and type the last one counts.
void carryProperties(const PiaBlock& custom, CarriedItems& carried) {
    std::set<std::pair<PiaItemType, std::wstring>> names;
    for (std::size_t index = custom.items.size(); index-- > 0;) {
        if (custom.items[index]->type != PiaItemType::Block) {
            continue;
        }
        const auto& property = static_cast<const PiaBlock&>(*custom.items[index]);
        const std::wstring name = static_cast<const PiaStr*>(property.items[0])->value.str();
        if (names.emplace(property.items[1]->type, name).second) {
            carried.carry(&property);
            carried.carry(property.items[0]);
            carried.carry(property.items[1]);
        }
    }
}

template <class Node>
void carryAliases(const PiaBlock* block, CarriedItems& carried) {
    for (const NodeKey<Node>& key : NodeKeys<Node>::all) {
        if (block != nullptr && key.options.alias &&
            block->findItem(key.name.text(), key.type) == nullptr) {
            carried.carry(block->findItem(key.options.alias->text(), key.type));
        }
    }
}

/// The paths that the reader has spoken of: dropped blocks, and entries read in part.
std::map<std::wstring, PiaCode> reportedIn(const PiaReport& report) {
    std::map<std::wstring, PiaCode> reported;
    for (const PiaFinding& finding : report.warnings()) {
        if (finding.code == PiaCode::BlockDropped || finding.code == PiaCode::EntryPartlyRead) {
            reported.emplace(finding.path, finding.code);
        }
    }
    return reported;
}

/// What was not carried, in the order of the tree.
std::vector<LostItem> lostOf(const PiaBlock& root, const CarriedItems& carried,
                             const PiaReport& report) {
    const std::map<std::wstring, PiaCode> reported = reportedIn(report);
    const auto wasDropped = [&](const std::wstring& path) {
        const auto found = reported.find(path);
        return found != reported.end() && found->second == PiaCode::BlockDropped;
    };
    // The first fault of an entry that was read in part was spoken of.
    const auto isInPart = [&](const PiaWalk& walk, const std::wstring& path) {
        return walk.depth() > 0 &&
               reported.contains(path.substr(0, path.size() - walk.item().name.size() - 1));
    };
    std::vector<LostItem> lost;
    for (PiaWalk walk(root); walk.next() && lost.size() < mostLostItems;) {
        const PiaItem& item = walk.item();
        if (walk.isEnd()) {
            continue;
        }
        const bool isCarried = carried.carries(&item);
        if (isCarried && carried.couldRead(&item)) {
            continue;
        }
        std::wstring path = walk.path();
        if (!isCarried) {
            walk.skip();
            if (!wasDropped(path)) {
                lost.push_back({Reason::NotCarried, std::move(path), {}, item.line()});
            }
        } else if (!isInPart(walk, path)) {
            lost.push_back({Reason::Unreadable, std::move(path),
                            static_cast<const PiaNum&>(item).value, item.line()});
        }
    }
    return lost;
}

}  // namespace

std::vector<LostItem> lostItems(const PiaBlock& root, const CPlotCfg3& document,
                                const PiaReport& report) {
    CarriedItems carried(root);
    node_keys::show(document, carried);
    carryAliases<CMediaNode>(blockOf(&root, L"media"), carried);
    const PiaBlock* custom = blockOf(&root, L"custom");
    if (custom != nullptr && document.custom) {
        carryProperties(*custom, carried);
    }
    return lostOf(root, carried, report);
}

std::vector<LostItem> lostItems(const PiaBlock& root, const PlotModelParam& document,
                                const PiaReport& report) {
    CarriedItems carried(root);
    node_keys::show(document, carried);
    return lostOf(root, carried, report);
}

}  // namespace platen

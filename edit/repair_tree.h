/// Mending the items of a tree that was read from a salvaged body.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include "edit/repair_body.h"
#include "edit/repair_notes.h"
#include "pia/node_keys.h"

namespace platen {

/// What all that mends a tree needs: where lines are from, and where it is written down.
class TreeRepair {
public:
    TreeRepair(const SalvagedBody* source, RepairNotes& notes) : source_(source), notes_(notes) {}

    RepairNotes& notes() { return notes_; }

    /// Decides about items that had a name twice.
    void resolveDuplicates(PiaBlock& root);

    /// `item` stands at the path now, of which it is said why.
    void assume(RepairCode code, const PiaItem& place, std::wstring path, std::wstring found,
                std::wstring taken);
    /// Takes an item out of its block.
    void drop(PiaBlock& parent, const PiaItem* item, const std::wstring& path,
              RepairCode code = RepairCode::ItemDropped);
    /// Gives an item of a block another name, in its place.
    PiaItem* rename(PiaBlock& parent, const PiaItem* item, std::wstring_view name);

    /// Mends what keeps a node from being read, key by key, with the defaults of `defaults`. `path`
    /// leads to the block.
    template <class Node>
    void mendNode(PiaBlock& block, const std::wstring& path, const Node& defaults = Node());
    /// The same for each block of a list.
    template <class Entry>
    void mendEntries(PiaBlock* list, const std::wstring& path);
    /// The block of that name, which is made of the defaults when it is missing, and mended.
    template <class Node>
    PiaBlock& mendBlock(PiaBlock& root, PiaKey name);

    /// Gives each entry of a list the type and a number below `count` of its own; what cannot be an
    /// entry is dropped. False for a list that is too long for that.
    bool numberEntries(PiaBlock& list, PiaItemType type, std::size_t count,
                       const std::wstring& path);

    /// Puts back a required block that has a name with one wrong letter.
    void mendNameOf(PiaBlock& parent, std::wstring_view name, const std::wstring& path);

private:
    /// Mends the key of a finding; false when it is none of the defaults.
    bool mendKey(PiaBlock& block, const PiaBlock& defaults, const PiaFinding& finding,
                 const std::wstring& path);
    bool takeNearest(PiaBlock& block, const PiaBlock& defaults, const PiaItem& model,
                     const std::wstring& path);
    std::optional<std::uint64_t> lineOf(const PiaItem& item) const;

    const SalvagedBody* source_;
    RepairNotes& notes_;
};

/// A block of that name, or null.
PiaBlock* blockIn(const PiaBlock& parent, std::wstring_view name);
/// A copy of an item, under another name, whose lines are those of the item.
std::unique_ptr<PiaItem> copyWithLines(const PiaItem& item, std::wstring_view name);
/// Adds an item before the one at `position`; null when its name is taken.
PiaItem* insertItem(PiaBlock& parent, std::unique_ptr<PiaItem> item, std::size_t position);
/// The text of an item that is no block, or the lines of a block in one.
std::wstring textOf(const PiaItem& item);
std::wstring joined(const std::wstring& path, std::wstring_view name);

template <class Node>
void TreeRepair::mendNode(PiaBlock& block, const std::wstring& path, const Node& defaults) {
    // Each round makes one key readable that was not.
    constexpr int mostRounds = 200;
    PiaTree model;
    for (int round = 0; round < mostRounds; ++round) {
        PiaReport report;
        Node node = defaults;
        if (node_keys::read(block, node, {}, report)) {
            return;
        }
        if (round == 0 && !node_keys::write(defaults, model.root())) {
            return;
        }
        if (!mendKey(block, model.root(), *report.failure(), path)) {
            return;
        }
    }
}

template <class Entry>
void TreeRepair::mendEntries(PiaBlock* list, const std::wstring& path) {
    // Longer ones than any device has are not worth the time.
    constexpr std::size_t mostEntries = 4000;
    if (list == nullptr || list->items.size() > mostEntries) {
        return;
    }
    for (std::size_t index = 0; index < list->items.size(); ++index) {
        PiaItem* item = list->items[index];
        if (item->type == PiaItemType::Block) {
            mendNode<Entry>(static_cast<PiaBlock&>(*item), joined(path, item->name));
        }
    }
}

template <class Node>
PiaBlock& TreeRepair::mendBlock(PiaBlock& root, PiaKey name) {
    const std::wstring path(name.text());
    mendNameOf(root, name.text(), {});
    PiaBlock* block = blockIn(root, name.text());
    if (block == nullptr) {
        block = root.addBlock(name);
        static_cast<void>(node_keys::write(Node(), *block));
        assume(RepairCode::KeyDefault, root, path, {}, textOf(*block));
    }
    mendNode<Node>(*block, path);
    return *block;
}

}  // namespace platen

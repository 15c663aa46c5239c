/// Going through a tree, and naming its items by the way that leads to them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia_items.h>
#include <platen/platen_api.h>

/// Goes through all items below a block in written order, without recursion. What was reached may
/// be changed or destroyed before the next step, but no block on the way to it.
///
///     for (PiaWalk walk(root); walk.next();) { ... walk.item() ... }
class PLATEN_API PiaWalk {
public:
    /// Borrows the block, which itself is not gone to.
    explicit PiaWalk(const PiaBlock& root) : levels_{{&root, 0}} {}

    /// Goes to the next item, or back to a block behind the last of its children. False when all
    /// are done.
    bool next() {
        if (enters_) {
            levels_.push_back({static_cast<PiaBlock*>(item_), 0});
        }
        Level& level = levels_.back();
        isEnd_ = level.next == level.block->items.size();
        if (isEnd_) {
            return leave();
        }
        item_ = level.block->items[level.next++];
        enters_ = item_->type == PiaItemType::Block;
        return true;
    }
    /// The item that the last step reached.
    PiaItem& item() const { return *item_; }
    /// True behind the children of the block that `item` is.
    bool isEnd() const { return isEnd_; }
    /// How many blocks the item is in, beside the one that the walk began with.
    std::size_t depth() const { return levels_.size() - 1; }
    /// The block that holds the item.
    const PiaBlock& parent() const { return *levels_.back().block; }
    /// The names that lead to the item, joined by "/".
    std::wstring path() const;
    /// Leaves out the children of the block that was reached, and its end.
    void skip() { enters_ = false; }

private:
    struct Level {
        const PiaBlock* block;
        std::size_t next;
    };

    bool leave();

    std::vector<Level> levels_;
    PiaItem* item_ = nullptr;
    bool isEnd_ = false;
    /// True when the next step leads into `item_`.
    bool enters_ = false;
};

/// What a path leads to: items of one name in one block, in the order of the file.
struct PiaPlace {
    /// The block that holds them; of no meaning when there are none.
    PiaBlock* parent = nullptr;
    /// Empty when nothing has the path.
    std::vector<PiaItem*> items;
};

/// The items that `path` names: names from `root` joined by "/", perhaps followed by ":" and a type
/// word. Names may hold "/" and ":" themselves: the longest name that leads to an item wins, and a
/// type word counts as one only when no item is named with it.
PLATEN_API PiaPlace piaFindPlace(PiaBlock& root, std::wstring_view path);
/// The same for a tree that is only looked at.
PLATEN_API std::vector<const PiaItem*> piaFindItems(const PiaBlock& root, std::wstring_view path);

/// The line of the item at `path`, or of the innermost block on the way that is there; see
/// `PiaItem::line`.
PLATEN_API std::uint32_t piaLineOf(const PiaBlock& root, std::wstring_view path);

/// The word that stands for an item's type behind the path, such as ":str".
PLATEN_API std::wstring_view piaTypeSuffix(PiaItemType type);
/// The type that the suffix of `path` names, and the suffix taken off; empty when there is none.
PLATEN_API std::optional<PiaItemType> piaTakeTypeSuffix(std::wstring_view& path);

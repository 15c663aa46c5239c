/// A document node states its keys once, in the order of the file; reading, writing and listing
/// all follow that list.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "pia.h"
#include "utcore.h"

/// Where a block stands in the tree: a chain on the stack, joined only when a fault is reported.
struct PiaPath {
    const PiaPath* parent = nullptr;
    std::wstring_view name;

    /// "plot_style/3/color" for this path and the key "color"; an empty key gives the path itself.
    std::wstring join(std::wstring_view key) const;
};

/// Whether a key may be missing when a node is read.
enum class KeyPresence { Required, Optional };

/// One key of a node: its name, the member that holds it (whose type says what kind of item it
/// is), and how it is read and written.
template <class Node>
struct NodeKey {
    using Member = std::variant<std::int32_t Node::*, double Node::*, bool Node::*,
                                std::wstring Node::*>;

    PiaKey name;
    Member member;
    KeyPresence presence = KeyPresence::Required;
    /// What an optional key's member becomes when the key is missing; null keeps the member.
    void (*whenAbsent)(Node&) = nullptr;
    /// Digits after the point of a double; negative means 6.
    int precision = -1;
};

namespace node_keys {

inline PiaItemType itemTypeOf(const std::int32_t&) { return PiaItemType::Num; }
inline PiaItemType itemTypeOf(const double&) { return PiaItemType::Num; }
inline PiaItemType itemTypeOf(const bool&) { return PiaItemType::Bool; }
inline PiaItemType itemTypeOf(const std::wstring&) { return PiaItemType::Str; }

// Each takes an item of the type that `itemTypeOf` says; false when a number does not convert.
inline bool convert(const PiaItem& item, std::int32_t& value) {
    return static_cast<const PiaNum&>(item).value.read(
        [&](auto text) { return ut::scanInt(text, value); });
}
inline bool convert(const PiaItem& item, double& value) {
    return static_cast<const PiaNum&>(item).value.read(
        [&](auto text) { return ut::scanDouble(text, value); });
}
inline bool convert(const PiaItem& item, std::wstring& value) {
    static_cast<const PiaStr&>(item).value.read(
        [&](auto text) { value.assign(text.begin(), text.end()); });
    return true;
}
inline bool convert(const PiaItem& item, bool& value) {
    value = static_cast<const PiaBool&>(item).value;
    return true;
}

inline bool add(PiaSink& block, PiaKey name, std::int32_t value, int) {
    return block.addInt(name, value);
}
inline bool add(PiaSink& block, PiaKey name, double value, int precision) {
    return block.addDouble(name, value, precision);
}
inline bool add(PiaSink& block, PiaKey name, bool value, int) { return block.addBool(name, value); }
inline bool add(PiaSink& block, PiaKey name, const std::wstring& value, int) {
    return block.addString(name, value);
}

/// Notes that `key` of the block at `path` is missing or does not convert; false.
bool reportUnreadable(PiaReport& report, const PiaBlock& block, const PiaPath& path,
                      std::wstring_view key, PiaItemType type);

/// Where the keys stood in the node that was read last. Nodes of a list are alike, and a reader
/// stores their names once: the same name at the same place is known by its address.
template <std::size_t Count>
class Places {
public:
    /// The item of key number `index`, or null.
    const PiaItem* find(const PiaBlock& block, std::size_t index, std::wstring_view name,
                        PiaItemType type) {
        Place& place = places_[index];
        if (place.position < block.items.size()) {
            const PiaItem* item = block.items[place.position];
            if (item->name.c_str() == place.name && item->type == type) {
                return item;
            }
        }
        const PiaItem* item = block.findItem(name, type);
        if (item != nullptr && index < block.items.size()) {
            // Most keys stand at their own place, or a few places before it.
            for (std::size_t position = index + 1; position-- > 0;) {
                if (block.items[position] == item) {
                    place = {position, item->name.c_str()};
                    break;
                }
            }
        }
        return item;
    }

private:
    struct Place {
        std::size_t position = 0;
        /// Never read through: its tree may be gone.
        const wchar_t* name = nullptr;
    };
    std::array<Place, Count> places_;
};

/// Reads the keys in order. False at the first required one that is missing or unreadable, which
/// goes to `report`; the members before it keep what was read. `places` serves one tree.
template <class Node, std::size_t Count>
bool read(const std::array<NodeKey<Node>, Count>& keys, const PiaBlock& block, Node& node,
          const PiaPath& path, PiaReport& report, Places<Count>& places) {
    for (std::size_t index = 0; index < Count; ++index) {
        const NodeKey<Node>& key = keys[index];
        const bool done = std::visit(
            [&](auto member) {
                auto& value = node.*member;
                const PiaItemType type = itemTypeOf(value);
                const PiaItem* item = places.find(block, index, key.name.text(), type);
                if (item != nullptr && convert(*item, value)) {
                    return true;
                }
                if (key.presence == KeyPresence::Required) {
                    return reportUnreadable(report, block, path, key.name.text(), type);
                }
                if (key.whenAbsent != nullptr) {
                    key.whenAbsent(node);
                }
                return true;
            },
            key.member);
        if (!done) {
            return false;
        }
    }
    return true;
}

/// The same for a node that is no part of a list.
template <class Node, std::size_t Count>
bool read(const std::array<NodeKey<Node>, Count>& keys, const PiaBlock& block, Node& node,
          const PiaPath& path, PiaReport& report) {
    Places<Count> places;
    return read(keys, block, node, path, report, places);
}

/// Adds to `block`, in order, the keys that `chosen(key)` accepts. False when one is there already.
template <class Node, class Chosen>
bool write(std::span<const NodeKey<Node>> keys, const Node& node, PiaSink& block, Chosen chosen) {
    for (const NodeKey<Node>& key : keys) {
        if (chosen(key) && !std::visit(
                               [&](auto member) {
                                   return add(block, key.name, node.*member, key.precision);
                               },
                               key.member)) {
            return false;
        }
    }
    return true;
}

/// Calls `visitor(name, value)` for every key in order; `value` has the member's type.
template <class Node, class Visitor>
void visit(std::span<const NodeKey<Node>> keys, const Node& node, Visitor visitor) {
    for (const NodeKey<Node>& key : keys) {
        std::visit([&](auto member) { visitor(key.name.text(), node.*member); }, key.member);
    }
}

}  // namespace node_keys

/// A document node states its keys once, in the order of the file; reading, writing and listing
/// all follow that list.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "pia.h"

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

inline bool get(const PiaBlock& block, std::wstring_view name, std::int32_t& value) {
    return block.getInt(value, name);
}
inline bool get(const PiaBlock& block, std::wstring_view name, double& value) {
    return block.getDouble(value, name);
}
inline bool get(const PiaBlock& block, std::wstring_view name, std::wstring& value) {
    return block.getString(value, name);
}
inline bool get(const PiaBlock& block, std::wstring_view name, bool& value) {
    const auto* item = static_cast<const PiaBool*>(block.findItem(name, PiaItemType::Bool));
    if (item == nullptr) {
        return false;
    }
    value = item->value;
    return true;
}

inline bool add(PiaBlock& block, PiaKey name, std::int32_t value, int) {
    return block.addInt(name, value);
}
inline bool add(PiaBlock& block, PiaKey name, double value, int precision) {
    return block.addDouble(name, value, precision);
}
inline bool add(PiaBlock& block, PiaKey name, bool value, int) { return block.addBool(name, value); }
inline bool add(PiaBlock& block, PiaKey name, const std::wstring& value, int) {
    return block.addString(name, value);
}

/// Notes that `key` of the block at `path` is missing or does not convert; false.
bool reportUnreadable(PiaReport& report, const PiaBlock& block, const PiaPath& path,
                      std::wstring_view key, PiaItemType type);

/// Reads the keys in order. False at the first required one that is missing or unreadable, which
/// goes to `report`; the members before it keep what was read.
template <class Node>
bool read(std::span<const NodeKey<Node>> keys, const PiaBlock& block, Node& node,
          const PiaPath& path, PiaReport& report) {
    for (const NodeKey<Node>& key : keys) {
        const bool done = std::visit(
            [&](auto member) {
                if (get(block, key.name.text(), node.*member)) {
                    return true;
                }
                if (key.presence == KeyPresence::Required) {
                    return reportUnreadable(report, block, path, key.name.text(),
                                            itemTypeOf(node.*member));
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

/// Adds to `block`, in order, the keys that `chosen(key)` accepts. False when one is there already.
template <class Node, class Chosen>
bool write(std::span<const NodeKey<Node>> keys, const Node& node, PiaBlock& block, Chosen chosen) {
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

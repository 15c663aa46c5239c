/// A document node states its keys once, in the order of the file; reading, writing and listing
/// all follow that list.
///
/// A node type `Node` has a specialisation of `NodeKeys<Node>` with a constexpr array `all` of its
/// `NodeKey<Node>`s, each made by `nodeKey<&Node::member>(L"key")`. The member's type says what
/// kind of item the key is and how it is read and written (`NodeValue`). A node that is no record
/// of keys specialises `NodeCodec` instead.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "pia/access.h"

/// Where a block stands in the tree: a chain on the stack, joined only when a fault is reported.
struct PiaPath {
    const PiaPath* parent = nullptr;
    std::wstring_view name;
    /// See `PiaItem::line`.
    std::uint32_t line = 0;

    /// "plot_style/3/color" for this path and the key "color"; an empty key gives the path itself.
    std::wstring join(std::wstring_view key) const;
};

/// Is shown the values of a node in the order of its keys.
class NodeVisitor {
public:
    virtual ~NodeVisitor() = default;
    virtual void integer(std::wstring_view key, std::int32_t value) = 0;
    virtual void real(std::wstring_view key, double value) = 0;
    virtual void flag(std::wstring_view key, bool value) = 0;
    virtual void text(std::wstring_view key, const std::wstring& value) = 0;
    /// An optional key that is not there.
    virtual void absent(std::wstring_view key) = 0;
    /// A block, or an entry of a list (then `key` is its number).
    virtual void begin(std::wstring_view key) = 0;
    virtual void end() = 0;
};

template <class Node>
struct NodeKeys;

enum class KeyPresence { Required, Optional };

/// What a key may say beside its name and member.
template <class Node>
struct KeyOptions {
    KeyPresence presence = KeyPresence::Required;
    /// Another name that a reader accepts when the first is missing.
    std::optional<PiaKey> alias{};
    /// What the member becomes when the key is missing or unreadable; null keeps the member.
    void (*whenAbsent)(Node&) = nullptr;
    /// Whether the key is written; null for always.
    bool (*written)(const Node&) = nullptr;
    /// Digits after the point of a double; negative means 6.
    int precision = -1;
};

/// One key of a node.
template <class Node>
struct NodeKey {
    PiaKey name;
    KeyOptions<Node> options;
    PiaItemType type = PiaItemType::Str;
    /// Takes an item of that type, which stands at the path; false when it cannot be used.
    bool (*read)(const PiaItem&, Node&, const PiaPath&, PiaReport&);
    bool (*write)(const NodeKey&, const Node&, PiaSink&);
    void (*show)(const NodeKey&, const Node&, NodeVisitor&);
};

namespace node_keys {

/// A line as findings have it.
inline std::optional<std::uint64_t> known(std::uint32_t line) {
    return line == 0 ? std::nullopt : std::optional<std::uint64_t>(line);
}

/// Notes that a key of the block at `path` is missing, when `item` is null, or that its item does
/// not convert; false. A key may be missing because an item of its name has another type.
bool reportUnreadable(PiaReport& report, const PiaBlock& block, const PiaPath& path,
                      std::wstring_view key, PiaItemType type, const PiaItem* item);
/// Notes that an optional block was dropped, with the reason that `why` holds.
void reportDropped(PiaReport& report, const PiaPath& path, const PiaReport& why);
/// Notes that an entry of a list was read up to the fault that `why` holds.
void reportPartlyRead(PiaReport& report, const PiaPath& path, const PiaReport& why);
/// Adds the warnings of a part that was read under a report of its own.
void passWarnings(PiaReport& report, const PiaReport& part);

template <class Node>
bool read(const PiaBlock& block, Node& node, const PiaPath& path, PiaReport& report);
template <class Node>
bool write(const Node& node, PiaSink& block);
template <class Node>
void show(const Node& node, NodeVisitor& visitor);

/// Where the keys stood in the node that was read last. Nodes of a list are alike, and a reader
/// stores their names once: the same name at the same place is known by its address. Serves one
/// tree.
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

}  // namespace node_keys

/// How a node is read, written and shown: by its keys, unless specialised.
template <class Node>
struct NodeCodec {
    using Places = node_keys::Places<NodeKeys<Node>::all.size()>;

    /// Reads the keys in order. False at the first required one that is missing or unreadable,
    /// which goes to `report`; the members before it keep what was read.
    static bool read(const PiaBlock& block, Node& node, const PiaPath& path, PiaReport& report,
                     Places& places) {
        return [&]<std::size_t... Index>(std::index_sequence<Index...>) {
            return (readKey<Index>(block, node, path, report, places) && ...);
        }
        (std::make_index_sequence<NodeKeys<Node>::all.size()>());
    }

    static bool read(const PiaBlock& block, Node& node, const PiaPath& path, PiaReport& report) {
        Places places;
        return read(block, node, path, report, places);
    }

    /// Writes the keys that `chosen(key)` accepts, each when it says so itself. False when one is
    /// there already.
    template <class Chosen>
    static bool write(const Node& node, PiaSink& block, Chosen chosen) {
        for (const NodeKey<Node>& key : NodeKeys<Node>::all) {
            const bool written = key.options.written == nullptr || key.options.written(node);
            if (written && chosen(key) && !key.write(key, node, block)) {
                return false;
            }
        }
        return true;
    }

    static bool write(const Node& node, PiaSink& block) {
        return write(node, block, [](const NodeKey<Node>&) { return true; });
    }

    static void show(const Node& node, NodeVisitor& visitor) {
        for (const NodeKey<Node>& key : NodeKeys<Node>::all) {
            key.show(key, node, visitor);
        }
    }

private:
    /// Each key has code of its own: lists of thousands of nodes are read with it.
    template <std::size_t Index>
    static bool readKey(const PiaBlock& block, Node& node, const PiaPath& path, PiaReport& report,
                        Places& places) {
        constexpr NodeKey<Node> key = NodeKeys<Node>::all[Index];
        const std::wstring_view name = key.name.text();
        const PiaItem* item = places.find(block, Index, name, key.type);
        if constexpr (key.options.alias.has_value()) {
            if (item == nullptr) {
                item = block.findItem(key.options.alias->text(), key.type);
            }
        }
        if (item != nullptr && key.read(*item, node, {&path, item->name, item->line()}, report)) {
            return true;
        }
        if constexpr (key.options.presence == KeyPresence::Required) {
            return node_keys::reportUnreadable(report, block, path, name, key.type, item);
        }
        if constexpr (key.options.whenAbsent != nullptr) {
            key.options.whenAbsent(node);
        }
        return true;
    }
};

/// How the values of one type are read, written and shown. The general case is a node of its own in
/// a block of the key's name. `read` takes an item of the type, which stands at `path`.
template <class Value>
struct NodeValue {
    static constexpr PiaItemType type = PiaItemType::Block;

    static bool read(const PiaItem& item, Value& value, const PiaPath& path, PiaReport& report) {
        return node_keys::read(static_cast<const PiaBlock&>(item), value, path, report);
    }
    static bool write(PiaKey name, const Value& value, PiaSink& block, int) {
        PiaSink* child = block.addBlock(name);
        return child != nullptr && node_keys::write(value, *child);
    }
    static void show(std::wstring_view name, const Value& value, NodeVisitor& visitor) {
        visitor.begin(name);
        node_keys::show(value, visitor);
        visitor.end();
    }
};

template <>
struct NodeValue<std::int32_t> {
    static constexpr PiaItemType type = PiaItemType::Num;

    static bool read(const PiaItem& item, std::int32_t& value, const PiaPath&, PiaReport&) {
        return PiaAccess::read(static_cast<const PiaNum&>(item).value,
                               [&](auto text) { return ut::scanInt(text, value); });
    }
    static bool write(PiaKey name, std::int32_t value, PiaSink& block, int) {
        return block.addInt(name, value);
    }
    static void show(std::wstring_view name, std::int32_t value, NodeVisitor& visitor) {
        visitor.integer(name, value);
    }
};

template <>
struct NodeValue<double> {
    static constexpr PiaItemType type = PiaItemType::Num;

    static bool read(const PiaItem& item, double& value, const PiaPath&, PiaReport&) {
        return PiaAccess::read(static_cast<const PiaNum&>(item).value,
                               [&](auto text) { return ut::scanDouble(text, value); });
    }
    static bool write(PiaKey name, double value, PiaSink& block, int precision) {
        return block.addDouble(name, value, precision);
    }
    static void show(std::wstring_view name, double value, NodeVisitor& visitor) {
        visitor.real(name, value);
    }
};

template <>
struct NodeValue<bool> {
    static constexpr PiaItemType type = PiaItemType::Bool;

    static bool read(const PiaItem& item, bool& value, const PiaPath&, PiaReport&) {
        value = static_cast<const PiaBool&>(item).value;
        return true;
    }
    static bool write(PiaKey name, bool value, PiaSink& block, int) {
        return block.addBool(name, value);
    }
    static void show(std::wstring_view name, bool value, NodeVisitor& visitor) {
        visitor.flag(name, value);
    }
};

template <>
struct NodeValue<std::wstring> {
    static constexpr PiaItemType type = PiaItemType::Str;

    static bool read(const PiaItem& item, std::wstring& value, const PiaPath&, PiaReport&) {
        PiaAccess::copy(static_cast<const PiaStr&>(item).value, value);
        return true;
    }
    static bool write(PiaKey name, const std::wstring& value, PiaSink& block, int) {
        return block.addString(name, value);
    }
    static void show(std::wstring_view name, const std::wstring& value, NodeVisitor& visitor) {
        visitor.text(name, value);
    }
};

/// What `std::optional` and `std::shared_ptr` members share: absent is a value of its own, and a
/// block that cannot be read is dropped.
template <class Holder, class Value>
struct OptionalNodeValue {
    static constexpr PiaItemType type = NodeValue<Value>::type;

    static bool read(const PiaItem& item, Holder& holder, const PiaPath& path, PiaReport& report) {
        Value value{};
        PiaReport why;
        if (!NodeValue<Value>::read(item, value, path, why)) {
            node_keys::reportDropped(report, path, why);
            holder.reset();
            return false;
        }
        node_keys::passWarnings(report, why);
        emplace(holder, std::move(value));
        return true;
    }
    static bool write(PiaKey name, const Holder& holder, PiaSink& block, int precision) {
        return !holder || NodeValue<Value>::write(name, *holder, block, precision);
    }
    static void show(std::wstring_view name, const Holder& holder, NodeVisitor& visitor) {
        if (holder) {
            NodeValue<Value>::show(name, *holder, visitor);
        } else {
            visitor.absent(name);
        }
    }

private:
    static void emplace(std::optional<Value>& holder, Value&& value) { holder = std::move(value); }
    static void emplace(std::shared_ptr<Value>& holder, Value&& value) {
        holder = std::make_shared<Value>(std::move(value));
    }
};

template <class Value>
struct NodeValue<std::optional<Value>> : OptionalNodeValue<std::optional<Value>, Value> {};
template <class Value>
struct NodeValue<std::shared_ptr<Value>> : OptionalNodeValue<std::shared_ptr<Value>, Value> {};

/// A list: every child block yields an entry, however much of it could be read; entry i is written
/// as the block named i.
template <class List, class Entry, std::vector<Entry> List::*Entries>
struct NodeListCodec {
    static bool read(const PiaBlock& block, List& list, const PiaPath& path, PiaReport& report) {
        (list.*Entries).clear();
        typename NodeCodec<Entry>::Places places;
        for (const PiaItem* item : block.items) {
            if (item->type != PiaItemType::Block) {
                continue;
            }
            PiaReport why;
            const PiaPath entryPath{&path, item->name, item->line()};
            if (!NodeCodec<Entry>::read(static_cast<const PiaBlock&>(*item),
                                        (list.*Entries).emplace_back(), entryPath, why, places)) {
                node_keys::reportPartlyRead(report, entryPath, why);
            }
            node_keys::passWarnings(report, why);
        }
        return true;
    }

    static bool write(const List& list, PiaSink& block) {
        std::size_t number = 0;
        for (const Entry& entry : list.*Entries) {
            // A name that is taken already costs that entry alone.
            if (PiaSink* child = block.addBlock(std::to_wstring(number++))) {
                static_cast<void>(node_keys::write(entry, *child));
            }
        }
        return true;
    }

    static void show(const List& list, NodeVisitor& visitor) {
        std::size_t number = 0;
        for (const Entry& entry : list.*Entries) {
            visitor.begin(std::to_wstring(number++));
            node_keys::show(entry, visitor);
            visitor.end();
        }
    }
};

namespace node_keys {

template <class Node>
bool read(const PiaBlock& block, Node& node, const PiaPath& path, PiaReport& report) {
    return NodeCodec<Node>::read(block, node, path, report);
}

/// Reads a node whose reasons nobody asks for.
template <class Node>
bool read(const PiaBlock& block, Node& node) {
    PiaReport unread;
    return read(block, node, {}, unread);
}

template <class Node>
bool write(const Node& node, PiaSink& block) {
    return NodeCodec<Node>::write(node, block);
}

template <class Node>
void show(const Node& node, NodeVisitor& visitor) {
    NodeCodec<Node>::show(node, visitor);
}

template <class Node, class Value>
Node nodeOf(Value Node::*);

/// A key of a part of `Node` that `partOf` gives: a member, or a base.
template <class Node, class Value, auto PartOf, auto ConstPartOf>
constexpr NodeKey<Node> keyOf(PiaKey name, KeyOptions<Node> options) {
    return {name,
            options,
            NodeValue<Value>::type,
            [](const PiaItem& item, Node& node, const PiaPath& path, PiaReport& report) {
                return NodeValue<Value>::read(item, PartOf(node), path, report);
            },
            [](const NodeKey<Node>& key, const Node& node, PiaSink& block) {
                return NodeValue<Value>::write(key.name, ConstPartOf(node), block,
                                               key.options.precision);
            },
            [](const NodeKey<Node>& key, const Node& node, NodeVisitor& visitor) {
                NodeValue<Value>::show(key.name.text(), ConstPartOf(node), visitor);
            }};
}

}  // namespace node_keys

/// The key of a member.
template <auto Member, class Node = decltype(node_keys::nodeOf(Member))>
constexpr NodeKey<Node> nodeKey(PiaKey name, KeyOptions<Node> options = {}) {
    using Value = std::remove_reference_t<decltype(std::declval<Node&>().*Member)>;
    return node_keys::keyOf<Node, Value, [](Node& node) -> Value& { return node.*Member; },
                            [](const Node& node) -> const Value& { return node.*Member; }>(name,
                                                                                           options);
}

/// The key of a base class that a node carries as a block of its own.
template <class Base, class Node>
constexpr NodeKey<Node> baseKey(PiaKey name) {
    return node_keys::keyOf<Node, Base, [](Node& node) -> Base& { return node; },
                            [](const Node& node) -> const Base& { return node; }>(name, {});
}

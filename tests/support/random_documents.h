/// Documents at random, the same on every system for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include <platen/pia.h>

enum class RandomKind {
    Ctb,
    /// A table whose colours have the styles of their places without saying so.
    CtbWithoutIndex,
    Stb,
    /// A named table that says which style each colour has.
    StbWithIndex,
    Pc3,
    Pmp,
};

inline constexpr RandomKind randomKinds[] = {RandomKind::Ctb, RandomKind::CtbWithoutIndex,
                                             RandomKind::Stb, RandomKind::StbWithIndex,
                                             RandomKind::Pc3, RandomKind::Pmp};

class RandomDocuments {
public:
    explicit RandomDocuments(std::uint32_t seed) : engine_(seed) {}

    /// A document that the library reads: any values, lists of any lengths with names that repeat,
    /// optional keys there or not, items that no document knows.
    std::unique_ptr<PiaBlock> make(RandomKind kind);

    /// Which items `change` may touch: by their paths, where an entry of a list has its name and
    /// stands for all in it.
    using Chosen = std::function<bool(std::wstring_view path)>;
    /// Changes, adds and removes some items and entries; the document stays one. `mark` is part of
    /// all new names and texts, so that those of two marks never meet.
    void change(PiaBlock& root, std::wstring_view mark, const Chosen& chosen = {});
    /// Writes the same document in another way: numbers spelled anew, lists in another order where
    /// order means nothing.
    void respell(PiaBlock& root);

    /// 0 to `count` - 1.
    std::size_t below(std::size_t count) { return engine_() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    std::wstring word();

private:
    std::unique_ptr<PiaBlock> makeTable(RandomKind kind);
    std::unique_ptr<PiaBlock> makeFrom(const std::string& body);
    void fillLists(PiaBlock& root);
    void setValue(PiaItem& item, const PiaBlock& parent, std::wstring_view mark);
    std::wstring number();

    std::mt19937 engine_;
};

/// A deep copy, unnamed like every root.
std::unique_ptr<PiaBlock> copyOfTree(const PiaBlock& root);

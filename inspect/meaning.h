/// What a tree means as a document: which of its blocks are lists and what tells their entries
/// apart, which style each colour has, and the values of keys that are left out.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <platen/compare.h>
#include <platen/pia.h>
#include <platen/plotstyle.h>

namespace platen {

enum class DocumentFamily { Table, Configuration, Parameters, Other };

/// What tells the entries of a list apart.
enum class ListKind {
    None,
    Styles,
    /// Papers by the key that `listAt` gives.
    Papers,
    /// Custom properties by name and by the type of the value.
    Properties,
};

struct List {
    ListKind kind = ListKind::None;
    /// The key of an entry that holds its name.
    std::wstring_view nameKey{};
};

DocumentFamily familyOf(const PiaBlock& root);
/// Whether the block at `place` is a list of the document.
List listAt(DocumentFamily family, std::span<const DifferenceStep> place);

/// An entry of a list and the step that leads to it.
struct ListEntry {
    DifferenceStep step;
    PiaBlock* block = nullptr;
};
/// The step to an entry, but for how many of its name come before it.
DifferenceStep stepOfEntry(const PiaBlock& entry, const List& list);
/// The entries in the order of the file; styles, whose blocks are numbered, by their numbers.
std::vector<ListEntry> entriesOf(const PiaBlock& list, const List& kind);

/// The list of line weights of a table, those of a new one where it says nothing.
std::vector<double> lineWeightsOf(const PiaBlock& root);
/// What stands in the list at the place that the item names.
std::optional<double> millimetres(const PiaItem& lineWeight, std::span<const double> weights);

class Meaning {
public:
    explicit Meaning(const PiaBlock& root);
    /// That of parts of a document in which nothing is left out.
    explicit Meaning(DocumentFamily family);
    Meaning(const Meaning&) = delete;
    Meaning& operator=(const Meaning&) = delete;
    ~Meaning() = default;

    const PiaBlock& root() const { return root_; }
    DocumentFamily family() const { return family_; }

    /// What the document has for keys that the block leaves out.
    std::span<const std::unique_ptr<PiaItem>> missingIn(const PiaBlock& block) const;
    /// True for an item that stands for a key under another name.
    bool isAlias(const PiaItem& item) const { return alias_ == &item; }
    const PiaItem* alias() const { return alias_; }
    void forgetAlias() { alias_ = nullptr; }
    /// The item in the block, or what the document has instead; null for none.
    const PiaItem* find(const PiaBlock& block, std::wstring_view name, PiaItemType type) const;

    /// True when each of the 255 colours has the style of its own place.
    bool hasStylePerColor() const { return stylePerColor_; }
    /// True when each of the 255 colours has a style.
    bool hasColors() const { return hasColors_; }
    /// The style of a colour (0 to 254); only with colours.
    PiaBlock* styleOf(std::size_t color) const { return colors_[color]; }
    /// The styles by their places; empty when the list is at fault.
    const std::vector<PiaBlock*>& styles() const { return styles_; }
    /// The list of line weights of a table.
    std::span<const double> lineWeights() const { return lineWeights_; }

    /// A copy of the item with all that is in it and all that it leaves out.
    std::unique_ptr<PiaItem> completeCopy(const PiaItem& item) const;

private:
    friend class MissingKeys;

    void readTable();
    void readStyles(const PiaBlock& list);
    void readColors();
    void addMissing(const PiaBlock& block, std::unique_ptr<PiaItem> item) {
        missing_[&block].push_back(std::move(item));
    }

    const PiaBlock& root_;
    DocumentFamily family_;
    std::unordered_map<const PiaBlock*, std::vector<std::unique_ptr<PiaItem>>> missing_;
    const PiaItem* alias_ = nullptr;
    std::vector<PiaBlock*> styles_;
    std::array<PiaBlock*, CAciTable::count> colors_{};
    bool hasColors_ = false;
    bool stylePerColor_ = false;
    std::vector<double> lineWeights_;
};

}  // namespace platen

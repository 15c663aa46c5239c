/// How two documents differ by what they mean: entries of lists by their names, numbers by their
/// values, keys that are left out by the values that they then have.
///
///     const platen::Comparison comparison = platen::compare(before, after);
///     for (const std::string& line : platen::describe(comparison)) {
///         std::cout << line << '\n';
///     }
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/platen_api.h>

namespace platen {

/// One step on the way from the root to a place. It means the same place in other files.
struct PLATEN_API DifferenceStep {
    /// What a step leads to.
    enum class Kind {
        /// An item of a block, by its name.
        Member,
        /// An entry of a list, by the name that it has in the document: a style, a paper, a custom
        /// property.
        Entry,
        /// The style of a colour.
        Color,
    };
    Kind kind = Kind::Member;
    /// Of the member or entry; empty for a colour.
    std::wstring name{};
    /// Of an entry: how many of its name come before it. Of a colour: 1 to 255.
    std::size_t number = 0;
    /// Of a custom property: the type of its value, since one name may have several.
    std::optional<PiaItemType::Value> valueType{};

    bool operator==(const DifferenceStep&) const = default;
};

struct PLATEN_API Difference {
    /// What became of the place.
    enum class Change { Added, Removed, Changed };
    Change change = Change::Changed;
    /// Not empty.
    std::vector<DifferenceStep> place{};
    /// What kind of item differs.
    PiaItemType::Value type = PiaItemType::Block;
    /// The item as it was and as it is, with all that is in it; null for what was added or removed.
    /// A value that a document has for a key that is left out stands here like any other.
    ///@{
    std::shared_ptr<const PiaItem> before{};
    std::shared_ptr<const PiaItem> after{};
    ///@}
    /// For the line weight of a style, which is a place in its table's list: what stands there.
    ///@{
    std::optional<double> millimetresBefore{};
    std::optional<double> millimetresAfter{};
    ///@}
};

/// What differs in the container, which says nothing about the content.
struct ContainerDifference {
    /// What of the container differs: its version, its header, or the encoding of its text.
    enum class What { Version, Header, Encoding };
    What what = What::Version;
    /// In words.
    ///@{
    std::string before{};
    std::string after{};
    ///@}
};

struct Comparison {
    /// Empty for trees that were compared without their files.
    std::vector<ContainerDifference> container{};
    /// In the order of the documents.
    std::vector<Difference> differences{};
    /// A colour-dependent table was compared with a named one by what each colour gets: names of
    /// styles, and styles that no colour has, do not count.
    bool throughColors = false;

    /// Whether the contents mean the same.
    bool equal() const { return differences.empty(); }
};

/// Compares two trees by their contents alone.
PLATEN_API Comparison compare(const PiaBlock& before, const PiaBlock& after);
/// Compares two open inputs.
PLATEN_API Comparison compare(const PiaInput& before, const PiaInput& after);

/// The differences with one of these keys on their way, such as "lineweight" or "media"; all of
/// them for none.
PLATEN_API void keepOnly(Comparison& comparison, const std::vector<std::wstring>& keys);

/// "Color 7: lineweight 0.25 mm -> 0.35 mm": one difference in one line, UTF-8, without control
/// characters.
PLATEN_API std::string describe(const Difference& difference);
/// The same for what differs in the container.
PLATEN_API std::string describe(const ContainerDifference& difference);
/// The lines for all differences, the container's first: several keys of a style in one line, equal
/// changes of several styles in one line.
PLATEN_API std::vector<std::string> describe(const Comparison& comparison);

/// What is said about a file in the JSON of a comparison.
struct ComparedFile {
    /// Its name, UTF-8.
    std::string file;
    FileKind kind = FileKind::Pia;
};

/// One JSON object without a line feed, UTF-8, schema "platen.diff/1": enough to make the same
/// changes to other files, see edit_apply.h.
PLATEN_API std::string diffJson(const ComparedFile& before, const ComparedFile& after,
                                const Comparison& comparison);

/// One JSON object without a line feed, UTF-8, schema "platen.diff-file/1": a file that only one of
/// two folders has. For one that was given another name, both names; otherwise one is empty.
PLATEN_API std::string fileChangeJson(const std::string& before, const std::string& after);

}  // namespace platen

/// Changing the items of a tree by the paths that lead to them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <platen/edit_result.h>
#include <platen/pia.h>
#include <platen/platen_api.h>

namespace platen {

/// Changes a tree item by item, so that everything that is not named survives.
///
/// A path is the names from the root joined by "/", perhaps followed by ":" and the word of a type:
/// "str", "num", "bool", "bin" or "block". Items keep their types; new ones need the word.
class PLATEN_API ItemEditor {
public:
    /// Borrows the tree.
    explicit ItemEditor(PiaBlock& root) : root_(root) {}

    /// Destroys the item at `path`, with all that is in it.
    EditResult remove(std::wstring_view path);
    /// Gives the item at `path` another value, or adds one when `path` names a type: TRUE or FALSE,
    /// a number with a decimal point, hexadecimal digits, or any text, by the type.
    EditResult set(std::wstring_view path, const std::wstring& value);
    /// Adds an empty block at `path`, which ends in ":block". A block that is there stays.
    EditResult addBlock(std::wstring_view path);
    /// One of the last two from a line: "PATH=VALUE" or "PATH:block". A path may hold "=" itself:
    /// it ends at the first "=" behind the name of an item, or at the first of all.
    EditResult assign(std::wstring_view assignment);

    /// True once something is different from what it was.
    bool changed() const { return changed_; }

private:
    EditResult setValue(PiaItem& item, const std::wstring& value);
    EditResult add(std::wstring_view path, const std::wstring* value);

    PiaBlock& root_;
    bool changed_ = false;
};

/// The number that is all of `text`: a sign, digits with a decimal point, an exponent. Empty for
/// anything else, and for what is not finite.
PLATEN_API std::optional<double> wholeNumber(std::string_view text);

}  // namespace platen

/// Where items stand in a body: trees do not remember it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <platen/pia.h>

namespace platen {

/// Finds the lines of many paths ("a/b/c") in one pass over the body.
class ItemLines {
public:
    /// Asks for a path and the blocks on its way.
    void want(std::wstring_view path);
    /// Looks for all that was asked for; does nothing in a version-3 file.
    void find(const PiaInput& input);
    /// The line, from 1, of the item at `path`, or of the innermost block on the way that is there.
    std::optional<std::uint64_t> of(std::wstring_view path) const;

private:
    /// Paths in the encoding of UTF-8; 0 for those that were not found.
    std::map<std::string, std::uint64_t, std::less<>> lines_;
};

}  // namespace platen

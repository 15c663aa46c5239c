/// What a document leaves behind of the file that it was read from.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/pmp.h>

namespace platen {

struct LostItem {
    enum class Reason {
        /// The document has no such key, or the key has another type.
        NotCarried,
        /// An optional number that does not convert; the document has its usual value.
        Unreadable,
    };
    Reason reason;
    /// Names from the root, joined by "/".
    std::wstring path;
    /// The text of an unreadable number.
    std::wstring found;
};

/// In the order of the file, at most `mostLostItems`. A block is listed without its content, and
/// not at all when `report` says that it was dropped. Entries of lists are told by their place,
/// custom properties by their name, since their blocks may be named anyhow.
std::vector<LostItem> lostItems(const PiaBlock& root, const CPlotCfg3& document,
                                const PiaReport& report);
std::vector<LostItem> lostItems(const PiaBlock& root, const PlotModelParam& document,
                                const PiaReport& report);

inline constexpr std::size_t mostLostItems = 1000;

}  // namespace platen

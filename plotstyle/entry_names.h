/// Finds the style of every colour entry by its name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <platen/pia.h>
#include <platen/plotstyle.h>

namespace plot_style {

/// The style names of the 255 entries, waiting for their styles: each takes the first style
/// offered whose name equals its own ignoring case. Indexing the entries instead of the styles
/// keeps this small and the time linear, however many styles a file holds.
class EntryNames {
public:
    EntryNames() { first_.fill(none); }

    /// Borrows `name`; each entry is set once.
    void set(std::size_t entry, const PiaText& name);
    /// Calls `take(entry)` for every entry that was waiting for a style of this name.
    template <class Take>
    void offer(std::wstring_view styleName, Take take);
    /// The number of entries that wait for their style.
    std::size_t waiting() const { return waiting_; }

private:
    static constexpr std::size_t buckets = 512;
    static constexpr std::uint16_t none = 0xFFFF;

    struct Entry {
        const PiaText* name = nullptr;
        std::uint64_t hash = 0;
        /// The next entry in the bucket.
        std::uint16_t next = none;
    };

    static std::uint64_t hashOf(std::wstring_view name);
    static bool isName(const Entry& entry, std::uint64_t hash, std::wstring_view name);

    std::array<Entry, CAciTable::count> entries_;
    std::array<std::uint16_t, buckets> first_{};
    std::size_t waiting_ = 0;
};

template <class Take>
void EntryNames::offer(std::wstring_view styleName, Take take) {
    const std::uint64_t hash = hashOf(styleName);
    std::uint16_t* link = &first_[hash % buckets];
    while (*link != none) {
        Entry& entry = entries_[*link];
        if (isName(entry, hash, styleName)) {
            take(std::size_t{*link});
            *link = entry.next;
            --waiting_;
        } else {
            link = &entry.next;
        }
    }
}

}  // namespace plot_style

#include "plotstyle/entry_names.h"

#include <utility>

#include "pia/name_hash.h"
#include "utcore.h"

namespace plot_style {

void EntryNames::set(std::size_t entry, std::wstring name) {
    const std::uint64_t hash = hashOf(name);
    std::uint16_t& first = first_[hash % buckets];
    entries_[entry] = {.name = std::move(name), .hash = hash, .next = first};
    first = static_cast<std::uint16_t>(entry);
    ++waiting_;
}

std::uint64_t EntryNames::hashOf(std::wstring_view name) {
    std::uint64_t state = piaHashSeed();
    for (const wchar_t character : name) {
        state = piaMix(state, static_cast<std::uint64_t>(ut::toLower(character)));
    }
    return state;
}

bool EntryNames::isName(const Entry& entry, std::uint64_t hash, std::wstring_view name) {
    return entry.hash == hash && ut::equalNoCase(entry.name, name);
}

}  // namespace plot_style

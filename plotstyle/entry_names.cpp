#include "plotstyle/entry_names.h"

#include <algorithm>

#include <platen/utcore.h>
#include "pia/access.h"
#include "pia/name_hash.h"

namespace plot_style {

namespace {

/// The same for equal texts of either width.
template <class Char>
std::uint64_t foldedHash(std::basic_string_view<Char> text) {
    // Three characters at a time: none has more than 21 bits.
    constexpr unsigned bits = 21;
    std::uint64_t state = piaHashSeed() ^ text.size();
    std::uint64_t characters = 0;
    unsigned room = 3;
    for (const Char character : text) {
        const wchar_t folded = ut::toLower(static_cast<wchar_t>(character));
        characters = (characters << bits) | static_cast<std::uint64_t>(folded);
        if (--room == 0) {
            state = piaMix(state, characters);
            characters = 0;
            room = 3;
        }
    }
    return piaMix(state, characters);
}

}  // namespace

void EntryNames::set(std::size_t entry, const PiaText& name) {
    const std::uint64_t hash = PiaAccess::read(name, [](auto text) { return foldedHash(text); });
    std::uint16_t& first = first_[hash % buckets];
    entries_[entry] = {.name = &name, .hash = hash, .next = first};
    first = static_cast<std::uint16_t>(entry);
    ++waiting_;
}

std::uint64_t EntryNames::hashOf(std::wstring_view name) { return foldedHash(name); }

bool EntryNames::isName(const Entry& entry, std::uint64_t hash, std::wstring_view name) {
    const auto sameFolded = [](auto one, wchar_t other) {
        const auto wide = static_cast<wchar_t>(one);
        return wide == other || ut::toLower(wide) == ut::toLower(other);
    };
    return entry.hash == hash && PiaAccess::read(*entry.name, [&](auto text) {
               return std::equal(text.begin(), text.end(), name.begin(), name.end(), sameFolded);
           });
}

}  // namespace plot_style

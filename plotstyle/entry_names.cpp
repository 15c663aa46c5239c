#include "plotstyle/entry_names.h"

#include <algorithm>

#include "pia/name_hash.h"
#include "utcore.h"

namespace plot_style {

namespace {

/// The same for equal texts of either width.
template <class Char>
std::uint64_t foldedHash(std::basic_string_view<Char> text) {
    std::uint64_t state = piaHashSeed();
    for (const Char character : text) {
        const auto wide = static_cast<wchar_t>(character);
        state = piaMix(state, static_cast<std::uint64_t>(ut::toLower(wide)));
    }
    return state;
}

}  // namespace

void EntryNames::set(std::size_t entry, const PiaText& name) {
    const std::uint64_t hash = name.read([](auto text) { return foldedHash(text); });
    std::uint16_t& first = first_[hash % buckets];
    entries_[entry] = {.name = &name, .hash = hash, .next = first};
    first = static_cast<std::uint16_t>(entry);
    ++waiting_;
}

std::uint64_t EntryNames::hashOf(std::wstring_view name) { return foldedHash(name); }

bool EntryNames::isName(const Entry& entry, std::uint64_t hash, std::wstring_view name) {
    return entry.hash == hash && entry.name->read([&](auto text) {
        return std::equal(text.begin(), text.end(), name.begin(), name.end(),
                          [](auto one, wchar_t other) {
                              return ut::toLower(static_cast<wchar_t>(one)) == ut::toLower(other);
                          });
    });
}

}  // namespace plot_style

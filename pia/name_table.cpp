#include "pia/name_table.h"

#include <algorithm>

#include "pia/arena.h"
#include "pia/name_hash.h"

namespace {
constexpr std::size_t firstSize = 128;
}

PiaNameTable::PiaNameTable(PiaArena& arena)
    : arena_(arena), seed_(piaHashSeed()), slots_(firstSize) {}

PiaKey PiaNameTable::intern(std::string_view name) {
    const std::uint64_t hash = piaHash(name, seed_);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = hash & mask; slots_[at].text.data() != nullptr; at = (at + 1) & mask) {
        const Slot& slot = slots_[at];
        if (slot.hash == hash && std::equal(name.begin(), name.end(), slot.text.begin(),
                                            slot.text.end(), [](char narrow, wchar_t wide) {
                                                return static_cast<wchar_t>(narrow) == wide;
                                            })) {
            return PiaArena::keyOf(slot.text);
        }
    }
    if (++used_ * 2 > slots_.size()) {
        grow();
    }
    const PiaKey key = arena_.copyName(name);
    freeSlot(hash) = {hash, key.text()};
    return key;
}

PiaKey PiaNameTable::intern(std::wstring_view name) {
    if (std::any_of(name.begin(), name.end(), [](wchar_t c) { return c >= L'\x80'; })) {
        return arena_.copyName(name);
    }
    narrow_.assign(name.begin(), name.end());
    return intern(std::string_view(narrow_));
}

PiaNameTable::Slot& PiaNameTable::freeSlot(std::uint64_t hash) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].text.data() != nullptr) {
        at = (at + 1) & mask;
    }
    return slots_[at];
}

void PiaNameTable::grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.text.data() != nullptr) {
            freeSlot(slot.hash) = slot;
        }
    }
}

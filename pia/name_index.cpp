#include "pia/name_index.h"

#include <random>

#include "pia/name_hash.h"

namespace {
constexpr std::size_t firstSize = 64;
}

std::uint64_t piaHashSeed() {
    static const std::uint64_t seed = [] {
        std::random_device source;
        return (std::uint64_t{source()} << 32U) | source();
    }();
    return seed;
}

PiaNameIndex::PiaNameIndex() : slots_(firstSize) {}

std::uint32_t PiaNameIndex::hashOf(std::wstring_view name, PiaItemType type) {
    const std::uint64_t seed = piaHashSeed() + static_cast<std::uint64_t>(type);
    return static_cast<std::uint32_t>(piaHash(name, seed) >> 16U);
}

void PiaNameIndex::put(Slot slot) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = slot.hash & mask;
    while (slots_[at].place != 0) {
        at = (at + 1) & mask;
    }
    slots_[at] = slot;
}

void PiaNameIndex::add(const PiaItem& item, std::size_t position) {
    if (++used_ * 2 > slots_.size()) {
        std::vector<Slot> old(slots_.size() * 2);
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.place != 0) {
                put(slot);
            }
        }
    }
    put({hashOf(item.name, item.type), static_cast<std::uint32_t>(position + 1)});
}

PiaItem* PiaNameIndex::find(const PiaBlock::Items& items, std::wstring_view name,
                            PiaItemType type) const {
    const std::uint32_t hash = hashOf(name, type);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = hash & mask; slots_[at].place != 0; at = (at + 1) & mask) {
        if (slots_[at].hash == hash) {
            PiaItem* item = items[slots_[at].place - 1];
            if (item->type == type && item->name == name) {
                return item;
            }
        }
    }
    return nullptr;
}

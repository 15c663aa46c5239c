#include "pmp/unique_names.h"

#include <algorithm>
#include <utility>

#include <platen/utcore.h>

namespace {

std::wstring folded(std::wstring_view name) {
    std::wstring text(name);
    std::transform(text.begin(), text.end(), text.begin(), ut::toLower);
    return text;
}

}  // namespace

UniqueNames::Uses& UniqueNames::use(std::wstring foldedName) {
    Uses& uses = uses_.try_emplace(std::move(foldedName), Uses{count_, count_}).first->second;
    uses.last = count_++;
    return uses;
}

void UniqueNames::note(std::wstring_view name) { use(folded(name)); }

std::wstring UniqueNames::make(std::wstring_view name) {
    const auto same = uses_.find(folded(name));
    if (same == uses_.end()) {
        note(name);
        return std::wstring(name);
    }
    Uses& wanted = same->second;
    for (;; ++wanted.nextNumber) {
        std::wstring candidate = std::wstring(name) + L"_" + std::to_wstring(wanted.nextNumber);
        const auto other = uses_.find(folded(candidate));
        if (other == uses_.end() || other->second.last <= wanted.first) {
            note(candidate);
            return candidate;
        }
    }
}

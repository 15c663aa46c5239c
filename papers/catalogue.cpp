#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <platen/papers.h>
#include <platen/utcore.h>
#include "papers/catalogue_table.h"

namespace wut {

namespace {

constexpr std::wstring_view customPrefix = L"User";

bool lessNoCase(std::wstring_view left, std::wstring_view right) {
    return std::ranges::lexicographical_compare(left, right, {}, ut::toLower, ut::toLower);
}

std::wstring_view nameOf(std::int16_t id) {
    return cataloguePapers[static_cast<std::size_t>(id)].name;
}

using NameIndex = std::array<std::int16_t, cataloguePapers.size() - 1>;

/// The ids from 1 on, ordered by name. It is made on first use and needs no destruction, so that
/// other static objects can ask for papers at any time.
const NameIndex& nameIndex() {
    static const NameIndex index = [] {
        NameIndex ids{};
        std::int16_t next = 0;
        for (std::int16_t& id : ids) {
            id = ++next;
        }
        std::ranges::sort(ids, lessNoCase, nameOf);
        return ids;
    }();
    return index;
}

/// The number of a custom name; false, with `id` as it was, when `name` is none.
bool scanCustom(std::wstring_view name, std::int32_t& id) {
    return ut::equalNoCase(name.substr(0, customPrefix.size()), customPrefix) &&
           ut::scanInt(name.substr(customPrefix.size()), id);
}

}  // namespace

OdDbPlotSettings::PlotPaperUnits getUnitsForDevice(unsigned short id) {
    return id < cataloguePapers.size() ? cataloguePapers[id].units : kMillimeters;
}

bool isCustomPaperSize(int& id, const wchar_t* name) {
    return name != nullptr && scanCustom(name, id);
}

std::int16_t getPSnumber(const wchar_t* name) {
    if (name == nullptr) {
        return 0;
    }
    std::int32_t custom = 0;
    if (scanCustom(name, custom)) {
        return static_cast<std::int16_t>(custom);
    }
    const NameIndex& index = nameIndex();
    const auto found = std::ranges::lower_bound(index, std::wstring_view(name), lessNoCase, nameOf);
    return found != index.end() && ut::equalNoCase(nameOf(*found), name) ? *found : std::int16_t{0};
}

OdString getCanonicalPSname(std::int16_t id) {
    if (id > 0 && static_cast<std::size_t>(id) < cataloguePapers.size()) {
        return OdString(std::wstring(nameOf(id)));
    }
    return OdString(std::wstring(customPrefix) + std::to_wstring(id));
}

}  // namespace wut

#include "inspect/table_rules.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include <platen/utcore.h>
#include "pia/name_hash.h"
#include "plotstyle/style_keys.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

std::wstring pathOf(std::size_t style, std::wstring_view key) {
    std::wstring path(PlotStyleTableKeys::styles.text());
    path += L'/';
    path += std::to_wstring(style);
    path += L'/';
    path += key;
    return path;
}

struct FoldedHash {
    std::size_t operator()(std::wstring_view text) const {
        std::uint64_t state = piaHashSeed() ^ text.size();
        for (const wchar_t character : text) {
            state = piaMix(state, static_cast<std::uint64_t>(ut::toLower(character)));
        }
        return static_cast<std::size_t>(state);
    }
};

struct FoldedEqual {
    bool operator()(std::wstring_view left, std::wstring_view right) const {
        return ut::equalNoCase(left, right);
    }
};

void checkNames(const CPlotStyleTable& table, FindingList& findings) {
    std::unordered_map<std::wstring_view, std::size_t, FoldedHash, FoldedEqual> firsts;
    firsts.reserve(table.size());
    for (std::size_t index = 0; index < table.size(); ++index) {
        const std::wstring& name = table.style(index)->name();
        const auto [first, isNew] = firsts.try_emplace(name, index);
        if (!isNew) {
            findings.warn(
                {.code = PiaCode::StyleNameDuplicate,
                 .path = pathOf(index, L"name"),
                 .expected = L"a name other than that of style " + std::to_wstring(first->second),
                 .found = name});
        }
    }
}

void checkNumbers(const CPlotStyleTable& table, FindingList& findings) {
    constexpr auto lastLineWeight = static_cast<std::int32_t>(CCustomLineweightTable::count) - 1;
    constexpr std::int32_t fullScreen = 100;
    for (std::size_t index = 0; index < table.size(); ++index) {
        const auto checkRange = [&](PiaCode code, std::int32_t value, std::int32_t highest,
                                    std::wstring_view key) {
            if (value < 0 || value > highest) {
                findings.warn({.code = code,
                               .path = pathOf(index, key),
                               .expected = L"0 to " + std::to_wstring(highest),
                               .found = std::to_wstring(value)});
            }
        };
        const CPlotStyle& style = *table.style(index);
        checkRange(PiaCode::StyleLineWeightRange, style.lineWeight(), lastLineWeight,
                   L"lineweight");
        checkRange(PiaCode::StyleScreenRange, style.screen(), fullScreen, L"screen");
    }
}

}  // namespace

void checkTable(const CPlotStyleTable& table, std::optional<PiaKind> header,
                FindingList& findings) {
    if (header == PiaKind::Ctb && !table.hasACI()) {
        findings.warn({.code = PiaCode::HeaderKind, .path = L"aci_table_available"});
    }
    if (header == PiaKind::Ctb && table.hasACI() && !hasStylePerColour(table)) {
        findings.warn({.code = PiaCode::ColourOrder,
                       .path = std::wstring(PlotStyleTableKeys::aciTable.text())});
    }
    checkNumbers(table, findings);
    checkNames(table, findings);
}

}  // namespace platen

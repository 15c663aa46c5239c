#include "tools/platen/table_rules.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <platen/utcore.h>
#include "plotstyle/table_keys.h"
#include "tools/platen/recognise.h"

namespace platen {
namespace {

constexpr Rule duplicateName{"style-name-duplicate",
                             "two styles have the same name, so that nobody can ask for the second",
                             "rename one of them"};
constexpr Rule lineWeightRange{"style-lineweight-range",
                               "the line weight is no index of the table's line weights",
                               "choose one of the 27 line weights"};
constexpr Rule screenRange{"style-screen-range", "the screening is no percentage",
                           "set it between 0 and 100"};
constexpr Rule headerKind{"header-kind",
                          "the header names a colour-dependent table, but colours have no styles",
                          "convert the file to stb"};
constexpr Rule colourOrder{"colour-order",
                           "a colour does not use the style of its own place in the list; turning "
                           "the table into a named one goes by the place",
                           "put the styles into the order of the colours"};

std::wstring pathOf(std::size_t style, std::wstring_view key) {
    std::wstring path(PlotStyleTableKeys::styles.text());
    path += L'/';
    path += std::to_wstring(style);
    path += L'/';
    path += key;
    return path;
}

void checkRange(const Rule& rule, std::int32_t value, std::int32_t highest, std::wstring path,
                FindingList& findings) {
    if (value < 0 || value > highest) {
        findings.add({.rule = rule,
                      .path = std::move(path),
                      .expected = L"0 to " + std::to_wstring(highest),
                      .found = std::to_wstring(value)});
    }
}

void checkNames(const CPlotStyleTable& table, FindingList& findings) {
    std::unordered_map<std::wstring, std::size_t> firsts;
    for (std::size_t index = 0; index < table.size(); ++index) {
        std::wstring folded = table.style(index)->name();
        std::transform(folded.begin(), folded.end(), folded.begin(), ut::toLower);
        const auto [first, isNew] = firsts.try_emplace(std::move(folded), index);
        if (!isNew) {
            findings.add(
                {.rule = duplicateName,
                 .path = pathOf(index, L"name"),
                 .expected = L"a name other than that of style " + std::to_wstring(first->second),
                 .found = table.style(index)->name()});
        }
    }
}

}  // namespace

void checkTable(const CPlotStyleTable& table, std::optional<PiaKind> header,
                FindingList& findings) {
    constexpr auto lastLineWeight = static_cast<std::int32_t>(CCustomLineweightTable::count) - 1;
    constexpr std::int32_t fullScreen = 100;
    if (header == PiaKind::Ctb && !table.hasACI()) {
        findings.add({.rule = headerKind, .path = L"aci_table_available"});
    }
    if (header == PiaKind::Ctb && table.hasACI() && !hasStylePerColour(table)) {
        findings.add(
            {.rule = colourOrder, .path = std::wstring(PlotStyleTableKeys::aciTable.text())});
    }
    for (std::size_t index = 0; index < table.size(); ++index) {
        const CPlotStyle& style = *table.style(index);
        checkRange(lineWeightRange, style.lineWeight(), lastLineWeight,
                   pathOf(index, L"lineweight"), findings);
        checkRange(screenRange, style.screen(), fullScreen, pathOf(index, L"screen"), findings);
    }
    checkNames(table, findings);
}

}  // namespace platen

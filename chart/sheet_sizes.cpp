#include <algorithm>
#include <array>
#include <utility>

#include <platen/chart.h>
#include <platen/utcore.h>
#include "chart/sheet.h"

namespace platen {
namespace {

struct NamedSheet {
    std::string_view name;
    ChartSheet sheet;
};

constexpr std::array<NamedSheet, 10> sheets{{
    {"A0", {1189, 841}},
    {"A1", {841, 594}},
    {"A2", {594, 420}},
    {"A3", {420, 297}},
    {"A4", {297, 210}},
    {"A5", {210, 148}},
    {"A6", {148, 105}},
    {"Letter", {279.4, 215.9}},
    {"Legal", {355.6, 215.9}},
    {"Tabloid", {431.8, 279.4}},
}};

ChartSheet turned(ChartSheet sheet, ChartOrientation orientation) {
    const bool upright = sheet.width <= sheet.height;
    if ((orientation == ChartOrientation::Portrait && !upright) ||
        (orientation == ChartOrientation::Landscape && upright)) {
        std::swap(sheet.width, sheet.height);
    }
    return sheet;
}

bool isLower(std::string_view text, std::string_view name) {
    return std::ranges::equal(text, name, [](char left, char right) {
        return ut::toLower(static_cast<unsigned char>(left)) ==
               ut::toLower(static_cast<unsigned char>(right));
    });
}

}  // namespace

std::optional<ChartSheet> chartSheet(std::string_view name) {
    constexpr double least = 100;
    constexpr double most = 5000;
    const auto found = std::ranges::find_if(
        sheets, [&](const NamedSheet& sheet) { return isLower(name, sheet.name); });
    if (found != sheets.end()) {
        return found->sheet;
    }
    const std::size_t between = name.find_first_of("xX");
    ChartSheet sheet;
    if (between == std::string_view::npos ||
        !ut::scanDouble(name.substr(0, between), sheet.width) ||
        !ut::scanDouble(name.substr(between + 1), sheet.height) ||
        std::min(sheet.width, sheet.height) < least || std::max(sheet.width, sheet.height) > most) {
        return std::nullopt;
    }
    return sheet;
}

std::vector<std::string> chartSheetNames() {
    std::vector<std::string> names;
    for (const NamedSheet& sheet : sheets) {
        names.emplace_back(sheet.name);
    }
    return names;
}

namespace chart {

std::optional<ChartSheet> chosenSheet(const ChartOptions& options) {
    return options.sheet ? std::optional(turned(*options.sheet, options.orientation))
                         : std::nullopt;
}

std::vector<ChartSheet> usualSheets(const ChartOptions& options) {
    const ChartOrientation orientation = options.orientation == ChartOrientation::Portrait
                                             ? ChartOrientation::Portrait
                                             : ChartOrientation::Landscape;
    std::vector<ChartSheet> usual;
    for (const std::string_view name : {"A6", "A5", "A4", "A3"}) {
        usual.push_back(turned(*chartSheet(name), orientation));
    }
    return usual;
}

}  // namespace chart
}  // namespace platen

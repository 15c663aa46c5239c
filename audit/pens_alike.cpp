#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <platen/plotstyle.h>
#include <platen/style_words.h>
#include "audit/facts.h"

namespace platen {
namespace {

double dotsOf(double millimetres, double dotsPerInch) {
    constexpr double millimetresPerInch = 25.4;
    return std::max(1.0, std::round(millimetres / millimetresPerInch * dotsPerInch));
}

/// How wide a style draws, in dots, and everything else that shows.
auto lookOf(const CPlotStyle& style, double dots) {
    return std::tuple(dots, style.color(), style.mode_color(), style.color_policy(), style.pen(),
                      style.virtualPen(), style.screen(), style.linepattern_size(),
                      style.lineType(), style.isAdaptiveLinetype(), style.fillStyle(),
                      style.endStyle(), style.joinStyle());
}
using Look = decltype(lookOf(std::declval<const CPlotStyle&>(), 0));

/// The styles of one line weight: as colours, or by their names.
std::string pensInWords(const CPlotStyleTable& table, const std::vector<std::size_t>& places,
                        bool byColor) {
    constexpr std::size_t namesShown = 6;
    if (byColor) {
        std::vector<int> colors;
        std::transform(places.begin(), places.end(), std::back_inserter(colors),
                       [](std::size_t place) { return static_cast<int>(place) + 1; });
        return (colors.size() == 1 ? "color " : "colors ") + rangesInWords(colors);
    }
    std::string words;
    for (std::size_t index = 0; index < std::min(places.size(), namesShown); ++index) {
        words += (index == 0 ? "" : ", ") + nameInQuotes(table.style(places[index])->name());
    }
    return places.size() <= namesShown
               ? words
               : words + " and " + std::to_string(places.size() - namesShown) + " more";
}

AuditDetail detailOf(const CPlotStyleTable& table, double dots,
                     const std::map<double, std::vector<std::size_t>>& weights) {
    const bool byColor = hasStylePerColour(table);
    AuditDetail detail;
    for (const auto& [millimetres, places] : weights) {
        detail.text += (detail.text.empty() ? "" : ", ") + pensInWords(table, places, byColor) +
                       " with " + numberInWords(millimetres) + " mm";
        for (const std::size_t place : places) {
            if (byColor) {
                detail.colors.push_back(static_cast<int>(place) + 1);
            }
        }
    }
    detail.text += dots == 1 ? ": 1 dot" : ": " + numberInWords(dots) + " dots";
    return detail;
}

}  // namespace

void findPensAlike(const CPlotStyleTable& table, const AuditSettings& settings, AuditData& data) {
    // The styles of a look by their line weights.
    std::map<Look, std::map<double, std::vector<std::size_t>>> looks;
    for (std::size_t place = 0; place < table.size(); ++place) {
        const CPlotStyle& style = *table.style(place);
        const std::int32_t index = style.lineWeight();
        constexpr std::int32_t ofTheObject = 0;
        if (index <= ofTheObject || std::cmp_greater_equal(index, CCustomLineweightTable::count)) {
            continue;
        }
        const double weight = table.customLineweights()[static_cast<std::size_t>(index)];
        if (std::isfinite(weight) && std::isfinite(style.linepattern_size())) {
            looks[lookOf(style, dotsOf(weight, settings.dotsPerInch))][weight].push_back(place);
        }
    }
    // By the first of their styles.
    std::map<std::size_t, AuditDetail> groups;
    for (const auto& [look, weights] : looks) {
        if (weights.size() > 1) {
            std::size_t first = table.size();
            for (const auto& [weight, places] : weights) {
                first = std::min(first, places.front());
            }
            groups.emplace(first, detailOf(table, std::get<0>(look), weights));
        }
    }
    if (groups.empty()) {
        return;
    }
    AuditFinding finding = findingAbout(data, AuditCode::PensAlike,
                                        "pens that differ in line weight alone look the same at " +
                                            numberInWords(settings.dotsPerInch) + " dpi, in " +
                                            countInWords(groups.size(), "group", "groups"));
    for (auto& [first, detail] : groups) {
        addDetail(finding, std::move(detail), settings.mostDetails);
    }
    data.findings.push_back(std::move(finding));
}

}  // namespace platen

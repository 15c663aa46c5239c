#include "chart/style_rows.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include <platen/edit_styles.h>
#include <platen/inspect.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "chart/colors.h"
#include "platform/utcore/markup.h"
#include "plotstyle/palette.h"

namespace platen::chart {
namespace {

constexpr double millimetresPerInch = 25.4;

SceneColor colorOf(std::uint32_t rgb) {
    return {static_cast<std::uint8_t>(rgb >> 16U), static_cast<std::uint8_t>(rgb >> 8U),
            static_cast<std::uint8_t>(rgb)};
}

/// Paper shines through what is screened.
SceneColor screened(SceneColor color, int percent) {
    constexpr int all = 100;
    constexpr int brightest = 255;
    const int kept = std::clamp(percent, 0, all);
    const auto part = [kept](std::uint8_t value) {
        return static_cast<std::uint8_t>(brightest - (brightest - value) * kept / all);
    };
    return {part(color.red), part(color.green), part(color.blue)};
}

/// A gray that looks as bright.
SceneColor grayOf(SceneColor color) {
    constexpr double red = 0.299;
    constexpr double green = 0.587;
    constexpr double blue = 0.114;
    const auto gray = static_cast<std::uint8_t>(
        std::lround(red * color.red + green * color.green + blue * color.blue));
    return {gray, gray, gray};
}

SceneColor plotted(const CPlotStyle& style, SceneColor color) {
    return screened(style.isGrayScale() ? grayOf(color) : color, style.screen());
}

/// The colour that the style itself has; nothing for the object's.
std::optional<SceneColor> ownColor(const std::string& words) {
    constexpr std::string_view index = "index:";
    std::int32_t number = 0;
    if (words.starts_with(index) &&
        ut::scanInt(std::string_view(words).substr(index.size()), number)) {
        return colorOf(plot_style::palette[static_cast<std::size_t>(number) - 1]);
    }
    if (words.starts_with('#')) {
        constexpr int hexadecimal = 16;
        std::uint32_t rgb = 0;
        std::from_chars(words.data() + 1, words.data() + words.size(), rgb, hexadecimal);
        return colorOf(rgb);
    }
    return std::nullopt;
}

/// What stands for the object's colour where any may be meant.
constexpr SceneColor anyColor{0x3C, 0x46, 0x50};

std::string settingsOf(const CPlotStyle& style, const std::string& color, bool& namedPatterns) {
    const CPlotStyle fresh;
    std::string words;
    const auto add = [&words](bool differs, const std::string& text) {
        if (differs) {
            words += (words.empty() ? "" : ", ") + text;
        }
    };
    const auto addNumber = [&](const char* label, std::int32_t value, std::int32_t usual) {
        add(value != usual, label + std::to_string(value));
    };
    constexpr std::string_view index = "index:";
    add(color != "object",
        color.starts_with(index) ? "colour " + color.substr(index.size()) : color);
    add(style.isGrayScale(), "gray");
    add(style.screen() != fresh.screen(), std::to_string(style.screen()) + " %");
    add(!style.isDither(), "no dithering");
    const std::size_t before = words.size();
    addNumber("line type ", style.lineType(), fresh.lineType());
    addNumber("ends ", style.endStyle(), fresh.endStyle());
    addNumber("joins ", style.joinStyle(), fresh.joinStyle());
    addNumber("fill ", style.fillStyle(), fresh.fillStyle());
    namedPatterns = words.size() != before;
    add(style.linepattern_size() != fresh.linepattern_size(),
        "pattern size " + numberInWords(style.linepattern_size()));
    add(!style.isAdaptiveLinetype(), "not adaptive");
    addNumber("pen ", style.pen(), fresh.pen());
    addNumber("virtual pen ", style.virtualPen(), fresh.virtualPen());
    return words;
}

/// Two digits after the point or, where the file has more, three.
std::string weightInWords(double width) {
    constexpr std::size_t usual = 2;
    std::string words = ut::formatRounded(width, 3);
    const std::string padded = ut::formatFixedAscii(width, static_cast<int>(usual));
    return words.size() > padded.size() ? words : padded;
}

void setWeight(StyleRow& row, const CPlotStyle& style, const CCustomLineweightTable& weights) {
    const std::int32_t index = style.lineWeight();
    if (index == 0) {
        row.weightWords = "object";
        return;
    }
    const auto place = static_cast<std::size_t>(index);
    const bool known = index > 0 && place < CCustomLineweightTable::count &&
                       std::isfinite(weights[place]) && weights[place] >= 0;
    if (!known) {
        row.weight = StyleRow::Weight::Unknown;
        row.weightWords = "weight " + std::to_string(index);
        return;
    }
    row.weight = StyleRow::Weight::Millimetres;
    row.width = weights[place];
    row.weightWords = weightInWords(row.width) + " mm";
}

double dotsOf(double width, double dpi) {
    return std::max(1.0, std::round(width * dpi / millimetresPerInch));
}

std::string dotsInWords(double dots) {
    return ut::formatRounded(dots, 0) + (dots == 1 ? " dot" : " dots");
}

/// "0.05, 0.09 and 0.1"
std::string listOf(const std::set<double>& weights) {
    std::string words;
    std::size_t left = weights.size();
    for (const double weight : weights) {
        words += words.empty() ? "" : left == 1 ? " and " : ", ";
        words += weightInWords(weight);
        --left;
    }
    return words;
}

/// Gives rows the weights that a device prints, and says which are alike: those of a letter.
void printAt(double dpi, StyleRows& rows) {
    std::map<double, std::set<double>> weightsOf;
    for (const StyleRow& row : rows.rows) {
        if (row.weight == StyleRow::Weight::Millimetres) {
            weightsOf[dotsOf(row.width, dpi)].insert(row.width);
        }
    }
    std::map<double, char> letters;
    std::string alike;
    for (const auto& [dots, weights] : weightsOf) {
        if (weights.size() > 1) {
            // There are 27 weights, so that there are 13 such groups at most.
            const char letter = static_cast<char>('A' + letters.size());
            letters.emplace(dots, letter);
            alike += std::string(alike.empty() ? "" : "; ") + letter + ": " + listOf(weights) +
                     " mm (" + dotsInWords(dots) + ")";
        }
    }
    for (StyleRow& row : rows.rows) {
        if (row.weight != StyleRow::Weight::Millimetres) {
            continue;
        }
        const double dots = dotsOf(row.width, dpi);
        row.dotWords = dotsInWords(dots);
        if (const auto letter = letters.find(dots); letter != letters.end()) {
            std::set<double> others = weightsOf[dots];
            others.erase(row.width);
            row.alike = "prints as " + listOf(others) + " mm";
            row.dotWords += std::string(", ") + letter->second;
        }
        row.width = dots * millimetresPerInch / dpi;
    }
    rows.notes.push_back("Line weights as a device of " + ut::formatRounded(dpi, 3) +
                         " dots per inch prints them, in whole dots. " +
                         (alike.empty() ? "All weights in use stay different."
                                        : "These become equal: " + alike + "."));
}

/// The colours whose style stands at each place; empty for a table without colours.
std::vector<std::vector<int>> colorsOfStyles(const CPlotStyleTable& table) {
    std::map<const CPlotStyle*, std::size_t> places;
    for (std::size_t place = 0; place < table.size(); ++place) {
        places.emplace(table.style(place), place);
    }
    std::vector<std::vector<int>> colors(table.size());
    for (std::size_t entry = 0; table.ACI() != nullptr && entry < CAciTable::count; ++entry) {
        const auto found = places.find(table.ACI()->at(entry));
        if (found != places.end()) {
            colors[found->second].push_back(static_cast<int>(entry) + 1);
        }
    }
    return colors;
}

/// The places of the styles of each row.
std::vector<std::vector<std::size_t>> groupsOf(const CPlotStyleTable& table, bool gather) {
    std::vector<std::vector<std::size_t>> groups;
    const EqualStyles equal = gather ? equalStyles(table) : EqualStyles();
    std::map<std::size_t, const std::vector<std::size_t>*> firsts;
    std::set<std::size_t> gathered;
    for (const std::vector<std::size_t>& group : equal) {
        firsts.emplace(group.front(), &group);
        gathered.insert(group.begin(), group.end());
    }
    for (std::size_t place = 0; place < table.size(); ++place) {
        if (const auto found = firsts.find(place); found != firsts.end()) {
            groups.push_back(*found->second);
        } else if (!gathered.contains(place)) {
            groups.push_back({place});
        }
    }
    return groups;
}

std::string textOf(const std::wstring& text) { return ut::visibleText(ut::encodeUtf8(text)); }

std::string nameOf(const CPlotStyle& style) {
    const std::wstring& name = style.locName().empty() ? style.name() : style.locName();
    return name.empty() ? "(no name)" : textOf(name);
}

}  // namespace

StyleRows styleRows(const CPlotStyleTable& table, const ChartOptions& options) {
    StyleRows result;
    result.byColor = table.hasACI() && hasStylePerColour(table);
    const std::vector<std::vector<int>> colorsOfPlace =
        result.byColor ? std::vector<std::vector<int>>() : colorsOfStyles(table);
    for (const std::vector<std::size_t>& group : groupsOf(table, options.gather)) {
        const CPlotStyle& style = *table.style(group.front());
        StyleRow row;
        row.id = "style-" + std::to_string(group.front() + 1);
        const std::string color = colorText(style);
        row.words = settingsOf(style, color, row.namedPatterns);
        setWeight(row, style, table.customLineweights());
        std::vector<int> numbers;
        for (const std::size_t place : group) {
            numbers.push_back(static_cast<int>(place) + 1);
            if (!result.byColor) {
                row.label += (row.label.empty() ? "" : ", ") + nameOf(*table.style(place));
                const std::vector<int>& colors = colorsOfPlace[place];
                row.words += colors.empty() ? ""
                                            : (row.words.empty() ? "colours " : ", colours ") +
                                                  rangesInWords(colors);
            }
        }
        if (result.byColor) {
            row.label = rangesInWords(numbers);
        }
        const std::optional<SceneColor> own = ownColor(color);
        row.objectColor = !own && !result.byColor;
        if (!own && result.byColor) {
            for (const int number : numbers) {
                row.colors.push_back(plotted(
                    style, colorOf(plot_style::palette[static_cast<std::size_t>(number) - 1])));
            }
            row.numbers = std::move(numbers);
        } else {
            row.colors.push_back(plotted(style, own.value_or(anyColor)));
        }
        if (row.width > widestLine) {
            row.words += (row.words.empty() ? "" : ", ") + std::string("line cut off here");
        }
        if (!style.desc().empty()) {
            row.words += (row.words.empty() ? "" : "; ") + textOf(style.desc());
        }
        result.rows.push_back(std::move(row));
    }
    if (options.dpi > 0) {
        printAt(options.dpi, result);
    }
    return result;
}

}  // namespace platen::chart

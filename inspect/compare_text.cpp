#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <tuple>
#include <utility>

#include <platen/compare.h>
#include <platen/style_words.h>
#include "inspect/compare_words.h"
#include "plotstyle/index_name.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

using Change = Difference::Change;
using Kind = DifferenceStep::Kind;

/// What a line is about, and what it says. Lines of one subject are gathered into one, then those
/// of one kind that say the same.
struct Line {
    /// "Color", "Style", "Paper", "Custom property"; empty for what is gathered with nothing.
    std::string kind{};
    /// Follows the names, such as " (udm/media/size)".
    std::string list{};
    std::string subject{};
    int color = 0;
    std::string words{};
};

/// The number that an item of a numbered block is named with.
std::optional<std::size_t> placeIn(const Difference& difference, std::wstring_view block,
                                   std::size_t count) {
    std::size_t place = 0;
    const bool isThere = difference.place.size() == 2 && difference.place[0].name == block &&
                         difference.place[1].kind == Kind::Member &&
                         plot_style::parseIndex(difference.place[1].name, count, place);
    return isThere ? std::optional(place) : std::nullopt;
}

const char* entryWord(std::span<const DifferenceStep> place) {
    if (place[0].name == PlotStyleTableKeys::styles.text()) {
        return "Style";
    }
    return place[0].name == L"custom" ? "Custom property" : "Paper";
}

Line lineOfEntry(const Difference& difference, std::size_t entry) {
    const std::span<const DifferenceStep> place(difference.place);
    const DifferenceStep& step = place[entry];
    const bool ofStyle = place[0].name == PlotStyleTableKeys::styles.text();
    Line line;
    if (step.kind == Kind::Color) {
        line.kind = "Color";
        line.color = static_cast<int>(step.number);
        line.subject = std::to_string(step.number);
    } else {
        line.kind = entryWord(place);
        line.list = entry > 1 ? " (" + placeInWords(place.first(entry)) + ")" : "";
        line.subject = stepInWords(step);
    }
    if (entry + 1 == place.size()) {
        const bool isValue = step.valueType.has_value();
        const PiaItem& item = difference.after ? *difference.after : *difference.before;
        line.words = difference.change == Change::Added ? "added" : "removed";
        if (isValue && item.type == PiaItemType::Block) {
            const auto& property = static_cast<const PiaBlock&>(item);
            line.words += property.items.size() == 2 ? ": " + valueInWords(*property.items[1]) : "";
        }
        return line;
    }
    const std::span<const DifferenceStep> rest = place.subspan(entry + 1);
    const std::string_view label =
        ofStyle && rest.size() == 1 ? styleKeyLabel(rest[0].name) : std::string_view();
    const bool isPropertyValue = step.valueType.has_value() && rest.size() == 1;
    line.words = changeInWords(!label.empty()    ? std::string(label)
                               : isPropertyValue ? std::string()
                                                 : placeInWords(rest),
                               difference, ofStyle);
    return line;
}

Line lineOf(const Difference& difference) {
    constexpr std::size_t colors = CAciTable::count;
    for (std::size_t entry = 0; entry < difference.place.size(); ++entry) {
        if (difference.place[entry].kind != Kind::Member) {
            return lineOfEntry(difference, entry);
        }
    }
    if (const auto place = placeIn(difference, PlotStyleTableKeys::aciTable.text(), colors)) {
        const int color = static_cast<int>(*place) + 1;
        return {"Color", "", std::to_string(color), color,
                changeInWords("style", difference, false)};
    }
    if (const auto place = placeIn(difference, PlotStyleTableKeys::lineWeights.text(),
                                   CCustomLineweightTable::count)) {
        const auto [before, after] = sidesInWords(difference, false);
        return {"", "", "Lineweight " + std::to_string(*place), 0,
                before + " mm -> " + after + " mm"};
    }
    return {"", "", placeInWords(difference.place), 0, changeInWords("", difference, false)};
}

/// A mode color that changes as the color does says nothing more.
bool isSaid(const std::string& words, const std::string& before) {
    constexpr std::string_view mode = "mode color ";
    return words.starts_with(mode) &&
           (", " + before + ',').find(", " + words.substr(mode.find("color")) + ',') !=
               std::string::npos;
}

/// Joins what is said of one subject, in the order in which subjects come first.
std::vector<Line> joined(std::vector<Line> lines) {
    std::vector<Line> result;
    std::map<std::tuple<std::string, std::string, std::string>, std::size_t> subjects;
    for (Line& line : lines) {
        const auto [found, isNew] =
            subjects.try_emplace({line.kind, line.list, line.subject}, result.size());
        if (isNew) {
            result.push_back(std::move(line));
        } else if (!isSaid(line.words, result[found->second].words)) {
            result[found->second].words += ", " + line.words;
        }
    }
    return result;
}

std::string gatheredText(const std::vector<const Line*>& group) {
    constexpr std::size_t shown = 12;
    const Line& first = *group.front();
    std::string subjects;
    if (first.kind == "Color") {
        std::vector<int> colors;
        for (const Line* line : group) {
            colors.push_back(line->color);
        }
        std::ranges::sort(colors);
        subjects = rangesInWords(colors);
    } else {
        for (std::size_t index = 0; index < std::min(group.size(), shown); ++index) {
            subjects += (index == 0 ? "" : ", ") + group[index]->subject;
        }
        if (group.size() > shown) {
            subjects += " and " + std::to_string(group.size() - shown) + " more";
        }
    }
    return first.kind + (first.kind.empty() ? "" : " ") + subjects + first.list + ": " +
           first.words;
}

}  // namespace

std::string describe(const Difference& difference) {
    const Line line = lineOf(difference);
    return gatheredText({&line});
}

std::string describe(const ContainerDifference& difference) {
    constexpr std::array<std::string_view, 3> words{"version", "header", "encoding"};
    return "Container: " + std::string(words[static_cast<std::size_t>(difference.what)]) + ' ' +
           difference.before + " -> " + difference.after;
}

std::vector<std::string> describe(const Comparison& comparison) {
    std::vector<Line> lines;
    for (const Difference& difference : comparison.differences) {
        lines.push_back(lineOf(difference));
    }
    lines = joined(std::move(lines));
    std::vector<std::vector<const Line*>> groups;
    std::map<std::tuple<std::string, std::string, std::string>, std::size_t> alike;
    for (const Line& line : lines) {
        const auto [found, isNew] =
            alike.try_emplace({line.kind, line.list, line.words}, groups.size());
        if (isNew || line.kind.empty()) {
            groups.push_back({&line});
        } else {
            groups[found->second].push_back(&line);
        }
    }
    std::vector<std::string> texts;
    for (const ContainerDifference& difference : comparison.container) {
        texts.push_back(describe(difference));
    }
    for (const std::vector<const Line*>& group : groups) {
        texts.push_back(gatheredText(group));
    }
    return texts;
}

}  // namespace platen

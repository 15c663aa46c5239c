#include "tools/platen/words/table_text.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string_view>
#include <utility>

#include <platen/style_words.h>
#include "tools/platen/words/words.h"

namespace cli::words {
namespace {

/// A colour, with a word before it where it does not say what it is.
std::string colour(std::int32_t packed, std::string_view word) {
    return packed == -1 ? "object's colour" : std::string(word) + platen::colorInWords(packed);
}

std::string lineWeight(std::int32_t index, const CCustomLineweightTable& weights) {
    std::string words = "line weight " + std::to_string(index);
    const auto place = static_cast<std::size_t>(index);
    if (index >= 0 && place < CCustomLineweightTable::count) {
        words += " (" + number(weights[place]) + " mm)";
    }
    return words;
}

std::string lineWeights(const CCustomLineweightTable& weights) {
    const CCustomLineweightTable standard;
    std::string list;
    bool differs = false;
    for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
        differs = differs || weights[index] != standard[index];
        list += (index == 0 ? "" : " ") + number(weights[index]);
    }
    return (differs ? list : number(standard[0]) + " to " + number(standard[26]) + ", standard") +
           " (mm)";
}

void describeColours(const CPlotStyleTable& table, std::ostream& out) {
    std::vector<std::pair<const CPlotStyle*, std::vector<int>>> groups;
    for (std::size_t index = 0; index < CAciTable::count; ++index) {
        const CPlotStyle* style = table.ACI()->at(index);
        std::size_t place = 0;
        while (place < groups.size() && !groups[place].first->isEqual(*style, false)) {
            ++place;
        }
        if (place == groups.size()) {
            groups.emplace_back(style, std::vector<int>{});
        }
        groups[place].second.push_back(static_cast<int>(index) + 1);
    }
    for (const auto& [style, colours] : groups) {
        out << "  " << coloursInWords(colours) << ": "
            << settingsInWords(*style, table.customLineweights()) << '\n';
    }
}

void describeStyles(const CPlotStyleTable& table, std::ostream& out) {
    for (std::size_t index = 0; index < table.size(); ++index) {
        const CPlotStyle& style = *table.style(index);
        out << "  " << text(style.name());
        if (style.locName() != style.name()) {
            out << " (\"" << text(style.locName()) << "\")";
        }
        out << ": " << settingsInWords(style, table.customLineweights());
        if (!style.desc().empty()) {
            out << "; \"" << text(style.desc()) << '"';
        }
        if (const std::vector<int> colours = platen::colorsOf(table, style); !colours.empty()) {
            out << "; " << coloursInWords(colours);
        }
        out << '\n';
    }
}

}  // namespace

std::string coloursInWords(const std::vector<int>& colours) {
    return (colours.size() == 1 ? "colour " : "colours ") + platen::rangesInWords(colours);
}

std::string settingsInWords(const CPlotStyle& style, const CCustomLineweightTable& weights) {
    const CPlotStyle fresh;
    std::string words;
    const auto mention = [&words](bool differs, auto describe) {
        if (differs) {
            words += (words.empty() ? "" : ", ") + describe();
        }
    };
    const auto mentionNumber = [&](const char* label, std::int32_t value, std::int32_t usual) {
        mention(value != usual, [&] { return label + (" " + std::to_string(value)); });
    };
    mention(style.color() != fresh.color(), [&] { return colour(style.color(), "colour "); });
    mention(style.mode_color() != style.color(),
            [&] { return "mode colour: " + colour(style.mode_color(), ""); });
    mention(style.color_policy() != fresh.color_policy(),
            [&] { return platen::colorPolicyInWords(style.color_policy()); });
    mentionNumber("pen", style.pen(), fresh.pen());
    mentionNumber("virtual pen", style.virtualPen(), fresh.virtualPen());
    mention(style.screen() != fresh.screen(),
            [&] { return "screen " + std::to_string(style.screen()) + " %"; });
    mention(style.linepattern_size() != fresh.linepattern_size(),
            [&] { return "line pattern size " + number(style.linepattern_size()); });
    mentionNumber("line type", style.lineType(), fresh.lineType());
    mention(!style.isAdaptiveLinetype(), [] { return std::string("line type not adaptive"); });
    mention(style.lineWeight() != fresh.lineWeight(),
            [&] { return lineWeight(style.lineWeight(), weights); });
    mentionNumber("fill style", style.fillStyle(), fresh.fillStyle());
    mentionNumber("end style", style.endStyle(), fresh.endStyle());
    mentionNumber("join style", style.joinStyle(), fresh.joinStyle());
    return words.empty() ? "standard settings" : words;
}

void describeTable(const CPlotStyleTable& table, platen::FileKind kind, std::ostream& out) {
    line(out, "description", table.description().empty() ? "(none)" : text(table.description()));
    line(out, "scale factor",
         number(table.scaleFactor()) + (table.applyFactor() ? ", applied" : ", not applied"));
    line(out, "display units", std::to_string(table.customLineweightDisplayUnits()));
    line(out, "line weights", lineWeights(table.customLineweights()));
    line(out, "styles", std::to_string(table.size()));
    if (kind == platen::FileKind::Ctb && platen::hasStylePerColour(table)) {
        describeColours(table, out);
    } else {
        describeStyles(table, out);
    }
}

}  // namespace cli::words

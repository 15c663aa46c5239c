#include "tools/platen/words/paper_list.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include <platen/utcore.h>
#include "tools/platen/words/columns.h"

namespace cli::words {
namespace {

using Json = nlohmann::ordered_json;
using enum OdDbPlotSettings::PlotPaperUnits;

constexpr double millimetresPerInch = 25.4;
constexpr const char* schema = "platen.papers/1";

std::string size(double width, double height) {
    return ut::formatFixedAscii(width, 2) + " x " + ut::formatFixedAscii(height, 2);
}

/// Pixels are whole unless a file says otherwise.
std::string ownSize(const ShownPaper& paper) {
    const bool whole = paper.units == kPixels && std::floor(paper.width) == paper.width &&
                       std::floor(paper.height) == paper.height;
    return whole ? ut::formatFixedAscii(paper.width, 0) + " x " +
                       ut::formatFixedAscii(paper.height, 0)
                 : size(paper.width, paper.height);
}

std::string margins(const ShownPaper& paper) {
    if (!paper.marginsKnown) {
        return "";
    }
    if (paper.left == 0 && paper.bottom == 0 && paper.right == 0 && paper.top == 0) {
        return "none";
    }
    std::string text;
    for (const double margin : {paper.left, paper.bottom, paper.right, paper.top}) {
        text += (text.empty() ? "" : ", ") + ut::formatFixedAscii(margin, 2);
    }
    return text + ' ' + platen::unitSymbol(paper.units);
}

/// A file's text need not be UTF-8, JSON must be.
std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string sizeInWords(const ShownPaper& paper) {
    return ownSize(paper) + ' ' + platen::unitSymbol(paper.units);
}

void printPapers(const std::vector<ShownPaper>& papers, const Console& console) {
    std::vector<std::vector<std::string>> rows{{"id", "paper", "millimetres", "inches", "pixels",
                                                "unknown unit", "margins left, bottom, right, top",
                                                "kept in"}};
    for (const ShownPaper& paper : papers) {
        const std::optional<double> width = platen::inMillimetres(paper, paper.width);
        const bool onPaper = width.has_value();
        const double height = platen::inMillimetres(paper, paper.height).value_or(0);
        const std::string own = ownSize(paper);
        rows.push_back(
            {paper.id ? std::to_string(*paper.id) : "", ut::encodeUtf8(paper.name),
             onPaper ? size(*width, height) : "",
             onPaper ? size(*width / millimetresPerInch, height / millimetresPerInch) : "",
             paper.units == kPixels ? own : "", onPaper || paper.units == kPixels ? "" : own,
             margins(paper), paper.keptIn});
    }
    printColumns(rows, console);
}

void printPapersAsJson(const std::vector<ShownPaper>& papers, const std::string& source,
                       const Console& console) {
    for (const ShownPaper& paper : papers) {
        console.out << platen::paperJson(paper, source) << '\n';
    }
}

void printCatalogue(bool json, const Console& console) {
    constexpr std::int16_t lastId = 118;
    std::vector<std::vector<std::string>> rows{{"id", "name", "measured in"}};
    for (std::int16_t id = 1; id <= lastId; ++id) {
        const std::string name = ut::encodeUtf8(wut::getCanonicalPSname(id).text());
        const auto units = wut::getUnitsForDevice(static_cast<unsigned short>(id));
        if (json) {
            Json entry;
            entry["schema"] = schema;
            entry["source"] = "catalogue";
            entry["id"] = id;
            entry["name"] = name;
            entry["units"] = platen::unitSymbol(units);
            console.out << dump(entry) << '\n';
        } else {
            rows.push_back({std::to_string(id), name, platen::unitSymbol(units)});
        }
    }
    if (!json) {
        printColumns(rows, console);
    }
}

}  // namespace cli::words

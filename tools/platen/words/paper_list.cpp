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

bool hasSizeOnPaper(const ShownPaper& paper) {
    return paper.units == kMillimeters || paper.units == kInches;
}

double inMillimetres(const ShownPaper& paper, double length) {
    return paper.units == kInches ? length * millimetresPerInch : length;
}

double inInches(const ShownPaper& paper, double length) {
    return paper.units == kInches ? length : length / millimetresPerInch;
}

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
    return text + ' ' + unitSymbol(paper.units);
}

/// A file's text need not be UTF-8, JSON must be.
std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// As exact as files are, without the noise of converting inches.
Json lengthJson(double length) {
    constexpr double digits = 1e6;
    return std::round(length * digits) / digits;
}

Json paperJson(const ShownPaper& paper, const std::string& source) {
    const bool onPaper = hasSizeOnPaper(paper);
    const auto orNull = [&](double length) { return onPaper ? lengthJson(length) : Json(); };
    Json json;
    json["schema"] = schema;
    json["source"] = source;
    if (paper.id) {
        json["id"] = *paper.id;
    }
    json["name"] = ut::encodeUtf8(paper.name);
    json["global_name"] = ut::encodeUtf8(paper.globalName);
    json["units"] = unitSymbol(paper.units);
    json["width"] = lengthJson(paper.width);
    json["height"] = lengthJson(paper.height);
    json["width_mm"] = orNull(inMillimetres(paper, paper.width));
    json["height_mm"] = orNull(inMillimetres(paper, paper.height));
    json["width_in"] = orNull(inInches(paper, paper.width));
    json["height_in"] = orNull(inInches(paper, paper.height));
    json["margins"] = paper.marginsKnown ? Json{{"left", lengthJson(paper.left)},
                                                {"bottom", lengthJson(paper.bottom)},
                                                {"right", lengthJson(paper.right)},
                                                {"top", lengthJson(paper.top)}}
                                         : Json();
    json["kept_in"] = *paper.keptIn == '\0' ? Json() : Json(paper.keptIn);
    return json;
}

/// Papers of built-in devices and custom papers have the same fields.
template <class Paper>
ShownPaper shownAs(const Paper& paper) {
    ShownPaper result;
    result.units = paper.units;
    result.width = paper.width;
    result.height = paper.height;
    result.left = paper.left;
    result.bottom = paper.bottom;
    result.right = paper.right;
    result.top = paper.top;
    return result;
}

}  // namespace

ShownPaper shown(const wut::PaperSizeInfo& paper) {
    ShownPaper result = shownAs(paper);
    result.name = paper.displayName;
    result.globalName = paper.canonicalName;
    return result;
}

ShownPaper shown(const CustomPaperSize& paper) {
    ShownPaper result = shownAs(paper);
    result.name = paper.localName;
    result.globalName = paper.globalName;
    result.keptIn = paper.source == 0 ? "configuration" : "parameters";
    return result;
}

const char* unitSymbol(std::int32_t units) {
    switch (units) {
        case kInches:
            return "in";
        case kMillimeters:
            return "mm";
        case kPixels:
            return "px";
        default:
            return "?";
    }
}

std::string sizeInWords(const ShownPaper& paper) {
    return ownSize(paper) + ' ' + unitSymbol(paper.units);
}

void printPapers(const std::vector<ShownPaper>& papers, const Console& console) {
    std::vector<std::vector<std::string>> rows{{"id", "paper", "millimetres", "inches", "pixels",
                                                "unknown unit", "margins left, bottom, right, top",
                                                "kept in"}};
    for (const ShownPaper& paper : papers) {
        const bool onPaper = hasSizeOnPaper(paper);
        const std::string own = ownSize(paper);
        rows.push_back(
            {paper.id ? std::to_string(*paper.id) : "", ut::encodeUtf8(paper.name),
             onPaper ? size(inMillimetres(paper, paper.width), inMillimetres(paper, paper.height))
                     : "",
             onPaper ? size(inInches(paper, paper.width), inInches(paper, paper.height)) : "",
             paper.units == kPixels ? own : "", onPaper || paper.units == kPixels ? "" : own,
             margins(paper), paper.keptIn});
    }
    printColumns(rows, console);
}

void printPapersAsJson(const std::vector<ShownPaper>& papers, const std::string& source,
                       const Console& console) {
    for (const ShownPaper& paper : papers) {
        console.out << dump(paperJson(paper, source)) << '\n';
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
            entry["units"] = unitSymbol(units);
            console.out << dump(entry) << '\n';
        } else {
            rows.push_back({std::to_string(id), name, unitSymbol(units)});
        }
    }
    if (!json) {
        printColumns(rows, console);
    }
}

}  // namespace cli::words

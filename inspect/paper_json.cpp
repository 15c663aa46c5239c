#include <cmath>
#include <nlohmann/json.hpp>

#include <platen/inspect_papers.h>
#include <platen/utcore.h>

namespace platen {
namespace {

using Json = nlohmann::ordered_json;
using enum OdDbPlotSettings::PlotPaperUnits;

constexpr double millimetresPerInch = 25.4;

/// As exact as files are, without the noise of converting inches.
Json lengthJson(double length) {
    constexpr double digits = 1e6;
    return std::round(length * digits) / digits;
}

Json orNull(const std::optional<double>& length, double unit) {
    return length ? lengthJson(*length / unit) : Json();
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

std::optional<double> inMillimetres(const ShownPaper& paper, double length) {
    if (paper.units == kInches) {
        return length * millimetresPerInch;
    }
    return paper.units == kMillimeters ? std::optional(length) : std::nullopt;
}

std::string paperJson(const ShownPaper& paper, const std::string& source) {
    const std::optional<double> width = inMillimetres(paper, paper.width);
    const std::optional<double> height = inMillimetres(paper, paper.height);
    Json json;
    json["schema"] = "platen.papers/1";
    json["source"] = source;
    if (paper.id) {
        json["id"] = *paper.id;
    }
    json["name"] = ut::encodeUtf8(paper.name);
    json["global_name"] = ut::encodeUtf8(paper.globalName);
    json["units"] = unitSymbol(paper.units);
    json["width"] = lengthJson(paper.width);
    json["height"] = lengthJson(paper.height);
    json["width_mm"] = orNull(width, 1);
    json["height_mm"] = orNull(height, 1);
    json["width_in"] = orNull(width, millimetresPerInch);
    json["height_in"] = orNull(height, millimetresPerInch);
    json["margins"] = paper.marginsKnown ? Json{{"left", lengthJson(paper.left)},
                                                {"bottom", lengthJson(paper.bottom)},
                                                {"right", lengthJson(paper.right)},
                                                {"top", lengthJson(paper.top)}}
                                         : Json();
    json["kept_in"] = *paper.keptIn == '\0' ? Json() : Json(paper.keptIn);
    // A file's text need not be UTF-8, JSON must be.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen

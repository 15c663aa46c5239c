#include <algorithm>

#include <platen/chart.h>
#include <platen/utcore.h>
#include "c_interface/handles.h"

using namespace platen;
using namespace platen::c;

namespace {

/// The member of an object if it has that type, or `usual`.
template <class Value>
Value memberOr(const Json& object, const char* name, Value usual) {
    const auto found = object.find(name);
    if (found == object.end()) {
        return usual;
    }
    const Value* value = found->template get_ptr<const Value*>();
    return value != nullptr ? *value : usual;
}

/// False after a failure.
bool readOptions(State& state, const char* text, ChartOptions& chart) {
    const Json json = text == nullptr ? Json::object() : Json::parse(text, nullptr, false);
    if (!json.is_object()) {
        state.fail("argument-invalid", "the options of a chart are one JSON object");
        return false;
    }
    chart.title = memberOr<std::string>(json, "title", {});
    chart.gather = memberOr(json, "gather", false);
    chart.devicePapers = memberOr(json, "device_papers", false);
    const auto dpi = json.find("dpi");
    constexpr double most = 100000;
    chart.dpi =
        dpi != json.end() && dpi->is_number() ? std::clamp(dpi->get<double>(), 0.0, most) : 0.0;
    const std::string orientation = memberOr<std::string>(json, "orientation", {});
    chart.orientation = orientation == "portrait"    ? ChartOrientation::Portrait
                        : orientation == "landscape" ? ChartOrientation::Landscape
                                                     : ChartOrientation::Automatic;
    if (const std::string sheet = memberOr<std::string>(json, "sheet", {}); !sheet.empty()) {
        chart.sheet = chartSheet(sheet);
        if (!chart.sheet) {
            state.fail("argument-invalid", "there is no such sheet: " + sheet);
            return false;
        }
    }
    return true;
}

}  // namespace

platen_buffer* platen_chart(platen_document* document, const char* format, const char* options) {
    return with(document, [&](platen_document& file) -> platen_buffer* {
        ChartOptions chart;
        if (!readOptions(*file.state, options, chart)) {
            return nullptr;
        }
        const Content content = readContent(file.source.input(), file.path, file.state->reading());
        if (!content.table && !content.config && !content.parameters) {
            file.state->fail("wrong-kind", "it holds neither styles nor papers");
            return nullptr;
        }
        if (chart.title.empty()) {
            chart.title = ut::encodeUtf8(ut::fileNameOf(file.path));
        }
        const Scene scene = content.table    ? tableChart(*content.table, chart)
                            : content.config ? papersChart(*content.config, chart)
                                             : papersChart(*content.parameters, chart);
        const std::string_view word = format == nullptr ? "svg" : format;
        if (word == "svg" || word == "html" || word == "json") {
            return bufferOf(word == "svg"    ? sceneSvg(scene)
                            : word == "html" ? sceneHtml(scene)
                                             : sceneJson(scene));
        }
        file.state->fail("argument-invalid", "a chart is svg, html or json");
        return nullptr;
    });
}

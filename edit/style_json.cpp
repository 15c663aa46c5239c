#include <nlohmann/json.hpp>

#include <platen/edit_styles.h>
#include <platen/utcore.h>

namespace platen {

std::string stylesJson(const std::string& file, const CPlotStyleTable& table,
                       const std::vector<std::size_t>& places) {
    using Json = nlohmann::ordered_json;
    Json json;
    json["schema"] = "platen.styles/1";
    json["file"] = file;
    json["styles"] = Json::array();
    for (const std::size_t place : places) {
        const CPlotStyle& style = *table.style(place);
        Json object;
        object["number"] = place + 1;
        object["name"] = ut::encodeUtf8(style.name());
        object["localized_name"] = ut::encodeUtf8(style.locName());
        for (const StyleSetting& setting : styleSettings()) {
            object[std::string(setting.word)] =
                settingText(style, setting, table.customLineweights());
        }
        json["styles"].push_back(std::move(object));
    }
    // A file name need not be UTF-8, JSON must be.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen

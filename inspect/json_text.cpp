#include <cstddef>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

#include <platen/inspect.h>
#include <platen/utcore.h>
#include "plotcfg/document_keys.h"
#include "plotstyle/style_keys.h"
#include "plotstyle/table_keys.h"
#include "pmp/pmp_keys.h"

namespace platen {
namespace {

using Json = nlohmann::ordered_json;

/// A file name need not be UTF-8, JSON must be.
std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

template <class Number>
Json orNull(const std::optional<Number>& number) {
    return number ? Json(*number) : Json();
}

Json containerJson(const PiaContainer& container) {
    constexpr int compressedVersion = 2;
    Json json;
    json["version"] = container.version;
    json["header"] = container.kind ? Json(headerLetters(*container.kind)) : Json();
    json["body_bytes"] = container.bodyBytes;
    json["compressed_bytes"] = container.compressedBytes;
    json["checksum"] = container.version != compressedVersion ? Json()
                       : container.checksumHolds()            ? Json("ok")
                                                              : Json("mismatch");
    json["encoding"] = container.encoding == PiaEncoding::Utf8 ? "utf-8" : "ansi";
    return json;
}

/// Makes an object of the values that it is shown, with an object in it for each block.
class JsonVisitor : public NodeVisitor {
public:
    explicit JsonVisitor(Json& object) : objects_{&object} {}

    void integer(std::wstring_view key, std::int32_t value) override { at(key) = value; }
    void real(std::wstring_view key, double value) override { at(key) = value; }
    void flag(std::wstring_view key, bool value) override { at(key) = value; }
    void text(std::wstring_view key, const std::wstring& value) override {
        at(key) = ut::encodeUtf8(value);
    }
    void absent(std::wstring_view key) override { at(key) = nullptr; }
    void begin(std::wstring_view key) override {
        Json& block = at(key);
        block = Json::object();
        objects_.push_back(&block);
    }
    void end() override { objects_.pop_back(); }

private:
    /// The keys of a node are different: looking for each of them among the entries of a long list
    /// would take most of the time.
    Json& at(std::wstring_view key) {
        Json& object = *objects_.back();
        if (object.is_null()) {
            object = Json::object();
        }
        return object.get_ref<Json::object_t&>().emplace_back(ut::encodeUtf8(key), Json()).second;
    }

    /// The object itself and the blocks that are open in it. No member is added to an object while
    /// one in it is open, so that it stays in its place.
    std::vector<Json*> objects_;
};

template <class Node>
void addKeys(Json& json, const Node& node) {
    JsonVisitor visitor(json);
    node_keys::show(node, visitor);
}

Json aciJson(const CPlotStyleTable& table) {
    if (table.ACI() == nullptr) {
        return {};
    }
    Json names = Json::array();
    for (std::size_t index = 0; index < CAciTable::count; ++index) {
        const CPlotStyle* style = table.ACI()->at(index);
        names.push_back(style != nullptr ? Json(ut::encodeUtf8(style->name())) : Json());
    }
    return names;
}

Json tableJson(const CPlotStyleTable& table) {
    Json json;
    addKeys(json, table);
    json["uses_aci"] = table.useACI();
    json["aci"] = aciJson(table);
    Json styles = Json::array();
    for (std::size_t index = 0; index < table.size(); ++index) {
        Json style;
        addKeys(style, *table.style(index));
        styles.push_back(std::move(style));
    }
    json["styles"] = std::move(styles);
    Json weights = Json::array();
    for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
        weights.push_back(table.customLineweights()[index]);
    }
    json["custom_lineweights"] = std::move(weights);
    return json;
}

Json configJson(const CPlotCfg3& config) {
    Json json;
    addKeys(json, config);
    const BuiltInPlotDevice* device = config.builtInDevice();
    const PlotModelParam* pmp = config.pmp();
    json["built_in_device"] =
        device != nullptr ? Json(ut::encodeUtf8(device->name.text())) : Json();
    json["pmp"] = pmp != nullptr ? Json(ut::encodePath(pmp->filePath.text())) : Json();
    return json;
}

Json documentJson(const Content& content) {
    if (content.table) {
        return tableJson(*content.table);
    }
    if (content.config) {
        return configJson(*content.config);
    }
    Json json;
    if (content.parameters) {
        addKeys(json, *content.parameters);
    }
    return json;
}

Json findingJson(const Finding& finding) {
    Json json;
    json["code"] = piaCodeWord(finding.code);
    json["severity"] = finding.severity == Severity::Error ? "error" : "warning";
    json["offset"] = orNull(finding.offset);
    json["line"] = orNull(finding.line);
    json["path"] = ut::encodeUtf8(finding.path);
    json["expected"] = ut::encodeUtf8(finding.expected);
    json["found"] = ut::encodeUtf8(finding.found);
    json["message"] = piaCodeMessage(finding.code);
    json["remedy"] = finding.remedy;
    return json;
}

}  // namespace

std::string infoJson(const std::string& file, const PiaContainer& container,
                     const Content& content) {
    Json json;
    json["schema"] = "platen.info/1";
    json["file"] = file;
    json["kind"] = kindWord(content.kind);
    json["container"] = containerJson(container);
    json["document"] = documentJson(content);
    return dump(json);
}

std::string checkJson(const std::string& file, const CheckResult& result) {
    Json json;
    json["schema"] = "platen.check/1";
    json["file"] = file;
    json["kind"] = result.kind ? Json(kindWord(*result.kind)) : Json();
    json["ok"] = result.verdict == Verdict::Sound;
    json["findings"] = Json::array();
    for (const Finding& finding : result.findings) {
        json["findings"].push_back(findingJson(finding));
    }
    json["omitted"] = result.omitted;
    return dump(json);
}

}  // namespace platen

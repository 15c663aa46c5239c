#include "tools/platen/json_lines.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <span>
#include <string_view>

#include "plotstyle/style_keys.h"
#include "plotstyle/table_keys.h"
#include "utcore.h"

namespace platen {
namespace {

using Json = nlohmann::ordered_json;

/// A file name need not be UTF-8, JSON must be.
std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

template <class Value>
Json valueOf(const Value& value) {
    return value;
}
Json valueOf(const std::wstring& text) { return ut::encodeUtf8(text); }

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

template <class Node>
void addKeys(Json& json, std::span<const NodeKey<Node>> keys, const Node& node) {
    node_keys::visit(keys, node, [&](std::wstring_view name, const auto& value) {
        json[ut::encodeUtf8(name)] = valueOf(value);
    });
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
    addKeys<CPlotStyleTable>(json, PlotStyleTableKeys::settings, table);
    json["uses_aci"] = table.useACI();
    json["aci"] = aciJson(table);
    Json styles = Json::array();
    for (std::size_t index = 0; index < table.size(); ++index) {
        Json style;
        addKeys<CPlotStyle>(style, PlotStyleKeys::all, *table.style(index));
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

Json findingJson(const Finding& finding) {
    Json json;
    json["code"] = finding.rule.word;
    json["severity"] = finding.severity == Severity::Error ? "error" : "warning";
    json["offset"] = orNull(finding.offset);
    json["line"] = orNull(finding.line);
    json["path"] = ut::encodeUtf8(finding.path);
    json["expected"] = ut::encodeUtf8(finding.expected);
    json["found"] = ut::encodeUtf8(finding.found);
    json["message"] = finding.rule.message;
    json["remedy"] = finding.rule.remedy;
    return json;
}

}  // namespace

std::string infoLine(const std::string& file, const PiaContainer& container,
                     const Content& content) {
    Json json;
    json["schema"] = "platen.info/1";
    json["file"] = file;
    json["kind"] = kindWord(content.kind);
    json["container"] = containerJson(container);
    json["document"] = content.table ? tableJson(*content.table) : Json();
    return dump(json);
}

std::string checkLine(const std::string& file, std::optional<FileKind> kind,
                      const FindingList& findings) {
    Json json;
    json["schema"] = "platen.check/1";
    json["file"] = file;
    json["kind"] = kind ? Json(kindWord(*kind)) : Json();
    json["ok"] = findings.verdict() == ExitCode::Ok;
    json["findings"] = Json::array();
    for (const Finding& finding : findings.list()) {
        json["findings"].push_back(findingJson(finding));
    }
    json["omitted"] = findings.omitted();
    return dump(json);
}

}  // namespace platen

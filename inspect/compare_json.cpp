#include <nlohmann/json.hpp>
#include <utility>

#include <platen/compare.h>
#include <platen/utcore.h>

namespace platen {
namespace {

using Json = nlohmann::ordered_json;

std::string typeWord(PiaItemType type) { return ut::encodeUtf8(piaTypeSuffix(type).substr(1)); }

Json leafJson(const PiaItem& item) {
    return item.type == PiaItemType::Bool
               ? Json(static_cast<const PiaBool&>(item).value)
               : Json(ut::encodeUtf8(static_cast<const PiaTextItem&>(item).value));
}

/// A text, a bool, or an array of the items in a block.
Json valueJson(const PiaItem* item) {
    if (item == nullptr) {
        return {};
    }
    if (item->type != PiaItemType::Block) {
        return leafJson(*item);
    }
    Json items = Json::array();
    // Only the innermost list grows, so that those around it stay where they are.
    std::vector<Json*> open{&items};
    for (PiaWalk walk(static_cast<const PiaBlock&>(*item)); walk.next();) {
        if (walk.isEnd()) {
            open.pop_back();
            continue;
        }
        const bool isBlock = walk.item().type == PiaItemType::Block;
        Json entry;
        entry["name"] = ut::encodeUtf8(walk.item().name);
        entry["type"] = typeWord(walk.item().type);
        entry["value"] = isBlock ? Json::array() : leafJson(walk.item());
        open.back()->push_back(std::move(entry));
        if (isBlock) {
            open.push_back(&open.back()->back()["value"]);
        }
    }
    return items;
}

Json stepJson(const DifferenceStep& step) {
    if (step.kind == DifferenceStep::Kind::Member) {
        return ut::encodeUtf8(step.name);
    }
    Json json;
    if (step.kind == DifferenceStep::Kind::Color) {
        json["color"] = step.number;
        return json;
    }
    json["entry"] = ut::encodeUtf8(step.name);
    if (step.number != 0) {
        json["turn"] = step.number;
    }
    if (step.valueType) {
        json["type"] = typeWord(*step.valueType);
    }
    return json;
}

Json differenceJson(const Difference& difference) {
    constexpr std::array<const char*, 3> changes{"added", "removed", "changed"};
    Json json;
    json["change"] = changes[static_cast<std::size_t>(difference.change)];
    json["place"] = Json::array();
    for (const DifferenceStep& step : difference.place) {
        json["place"].push_back(stepJson(step));
    }
    json["type"] = typeWord(difference.type);
    json["before"] = valueJson(difference.before.get());
    json["after"] = valueJson(difference.after.get());
    if (difference.millimetresBefore) {
        json["before_mm"] = *difference.millimetresBefore;
    }
    if (difference.millimetresAfter) {
        json["after_mm"] = *difference.millimetresAfter;
    }
    json["text"] = describe(difference);
    return json;
}

Json fileJson(const ComparedFile& file) {
    Json json;
    json["file"] = file.file;
    json["kind"] = kindWord(file.kind);
    return json;
}

}  // namespace

std::string diffJson(const ComparedFile& before, const ComparedFile& after,
                     const Comparison& comparison) {
    constexpr std::array<const char*, 3> parts{"version", "header", "encoding"};
    Json json;
    json["schema"] = "platen.diff/1";
    json["before"] = fileJson(before);
    json["after"] = fileJson(after);
    json["equal"] = comparison.equal();
    json["through_colors"] = comparison.throughColors;
    json["container"] = Json::array();
    for (const ContainerDifference& difference : comparison.container) {
        Json entry;
        entry["what"] = parts[static_cast<std::size_t>(difference.what)];
        entry["before"] = difference.before;
        entry["after"] = difference.after;
        json["container"].push_back(std::move(entry));
    }
    json["differences"] = Json::array();
    for (const Difference& difference : comparison.differences) {
        json["differences"].push_back(differenceJson(difference));
    }
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string fileChangeJson(const std::string& before, const std::string& after) {
    Json json;
    json["schema"] = "platen.diff-file/1";
    json["change"] = before.empty() ? "added" : after.empty() ? "removed" : "renamed";
    json["before"] = before.empty() ? Json() : Json(before);
    json["after"] = after.empty() ? Json() : Json(after);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen

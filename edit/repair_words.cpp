#include <iterator>
#include <nlohmann/json.hpp>

#include <platen/edit_repair.h>
#include <platen/utcore.h>
#include "edit/repair_table.h"

namespace platen {
namespace {

using Json = nlohmann::ordered_json;

constexpr bool tableFollowsTheCodes() {
    for (std::size_t index = 0; index < std::size(repairCodeTable); ++index) {
        if (repairCodeTable[index].code != static_cast<RepairCode>(index)) {
            return false;
        }
    }
    return std::size(repairCodeTable) ==
           static_cast<std::size_t>(RepairCode::CharacterReplaced) + 1;
}
static_assert(tableFollowsTheCodes());

const RepairCodeEntry& entryOf(RepairCode code) {
    return repairCodeTable[static_cast<std::size_t>(code)];
}

/// A text among others in a line.
std::string excerpt(std::wstring_view text) {
    constexpr std::size_t longest = 60;
    const std::wstring_view shown = ut::utf16Prefix(text, longest);
    return '"' + ut::encodeUtf8(shown) + (shown.size() < text.size() ? "...\"" : "\"");
}

template <class Note>
std::string placeOf(const Note& note) {
    std::string text;
    if (note.line) {
        text += ", line " + std::to_string(*note.line);
    }
    if (note.offset) {
        text += ", byte " + std::to_string(*note.offset);
    }
    if (!note.path.empty()) {
        text += ", at " + ut::encodeUtf8(note.path);
    }
    return text;
}

const char* unitWord(Loss::Unit unit) {
    switch (unit) {
        case Loss::Unit::Bytes:
            return "bytes";
        case Loss::Unit::Lines:
            return "lines";
        case Loss::Unit::Items:
            break;
    }
    return "items";
}

template <class Number>
Json orNull(const std::optional<Number>& number) {
    return number ? Json(*number) : Json();
}

template <class Note>
Json placeJson(const Note& note) {
    Json json;
    json["offset"] = orNull(note.offset);
    json["line"] = orNull(note.line);
    json["path"] = ut::encodeUtf8(note.path);
    return json;
}

const char* outcomeWord(RepairResult::Outcome outcome) {
    switch (outcome) {
        case RepairResult::Outcome::Unchanged:
            return "unchanged";
        case RepairResult::Outcome::Repaired:
            return "repaired";
        case RepairResult::Outcome::Unusable:
            break;
    }
    return "unusable";
}

}  // namespace

const char* repairCodeWord(RepairCode code) { return entryOf(code).word; }
const char* repairCodeMessage(RepairCode code) { return entryOf(code).message; }
bool isSafe(RepairCode code) { return entryOf(code).safe; }

std::string describe(const Assumption& assumption) {
    std::string text = std::string("[") + repairCodeWord(assumption.code) + "] " +
                       repairCodeMessage(assumption.code) + placeOf(assumption);
    if (!assumption.found.empty()) {
        text += ", found " + excerpt(assumption.found);
    }
    if (!assumption.taken.empty()) {
        text += ", taken " + excerpt(assumption.taken);
    }
    return ut::printable(text);
}

std::string describe(const Loss& loss) {
    std::string unit = unitWord(loss.unit);
    if (loss.count == 1) {
        unit.pop_back();
    }
    std::string text = "lost " + std::to_string(loss.count) + ' ' + unit + placeOf(loss);
    if (!loss.text.empty()) {
        text += ": " + excerpt(loss.text);
    }
    return ut::printable(text);
}

std::string repairJson(const std::string& file, const RepairResult& result) {
    Json json;
    json["schema"] = "platen.repair/1";
    json["file"] = file;
    json["outcome"] = outcomeWord(result.outcome);
    json["kind"] = result.kind ? Json(kindWord(*result.kind)) : Json();
    json["reason"] = result.reason;
    json["assumptions"] = Json::array();
    for (const Assumption& assumption : result.assumptions) {
        Json entry;
        entry["code"] = repairCodeWord(assumption.code);
        entry["safe"] = isSafe(assumption.code);
        entry.update(placeJson(assumption));
        entry["found"] = ut::encodeUtf8(assumption.found);
        entry["taken"] = ut::encodeUtf8(assumption.taken);
        entry["message"] = repairCodeMessage(assumption.code);
        json["assumptions"].push_back(std::move(entry));
    }
    json["losses"] = Json::array();
    for (const Loss& loss : result.losses) {
        Json entry;
        entry["unit"] = unitWord(loss.unit);
        entry["count"] = loss.count;
        entry.update(placeJson(loss));
        entry["text"] = ut::encodeUtf8(loss.text);
        json["losses"].push_back(std::move(entry));
    }
    json["omitted_assumptions"] = result.omittedAssumptions;
    json["omitted_losses"] = result.omittedLosses;
    json["check"] = Json::parse(checkJson(file, result.check));
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen

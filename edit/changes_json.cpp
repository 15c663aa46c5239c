#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include <platen/edit_apply.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "edit/refusal.h"
#include "inspect/item_values.h"
#include "pia/file_body.h"

namespace platen {
namespace {

// Members that nobody has asked for may be many: this kind finds each in little time.
using Json = nlohmann::json;
using Kind = DifferenceStep::Kind;

constexpr std::size_t deepest = PiaLimits{}.depth;

/// Bounds what the parser nests, since what it makes is destroyed level by level.
bool isTooDeep(std::string_view text) {
    // Each block is an array in an object, in a few more.
    constexpr std::size_t most = 2 * deepest + 16;
    std::size_t depth = 0;
    bool inText = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (inText) {
            at += character == '\\' ? 1 : 0;
            inText = character != '"';
        } else if (character == '"') {
            inText = true;
        } else if (character == '{' || character == '[') {
            if (++depth > most) {
                return true;
            }
        } else if ((character == '}' || character == ']') && depth > 0) {
            --depth;
        }
    }
    return false;
}

const Json* member(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

/// What a line of a file can hold.
bool isLine(std::wstring_view text) {
    return text.find_first_of(std::wstring_view(L"\n\0", 2)) == std::wstring_view::npos;
}

std::optional<std::wstring> textOf(const Json* json) {
    std::wstring text;
    const auto* utf8 = json == nullptr ? nullptr : json->get_ptr<const std::string*>();
    return utf8 != nullptr && ut::decodeUtf8(*utf8, text) && isLine(text)
               ? std::optional(std::move(text))
               : std::nullopt;
}

std::optional<PiaItemType::Value> typeOf(const Json* json) {
    const std::optional<std::wstring> word = textOf(json);
    if (!word) {
        return std::nullopt;
    }
    std::wstring path = L":" + *word;
    std::wstring_view rest = path;
    const std::optional<PiaItemType> type = piaTakeTypeSuffix(rest);
    return type && rest.empty() ? std::optional<PiaItemType::Value>(*type) : std::nullopt;
}

/// A whole number of at most `most`.
std::optional<std::size_t> countOf(const Json* json, std::size_t most) {
    const auto* number =
        json == nullptr ? nullptr : json->get_ptr<const Json::number_unsigned_t*>();
    return number != nullptr && *number <= most ? std::optional(static_cast<std::size_t>(*number))
                                                : std::nullopt;
}

/// An item that is no block.
std::unique_ptr<PiaItem> leafOf(const Json& json, std::wstring_view name, PiaItemType type) {
    if (const auto* flag = json.get_ptr<const Json::boolean_t*>()) {
        return type == PiaItemType::Bool ? std::make_unique<PiaBool>(name, *flag) : nullptr;
    }
    const std::optional<std::wstring> text = textOf(&json);
    if (!text || !pia_body::valueReadsBack(*text, type)) {
        return nullptr;
    }
    switch (type) {
        case PiaItemType::Str:
            return std::make_unique<PiaStr>(name, *text);
        case PiaItemType::Num:
            return std::make_unique<PiaNum>(name, std::wstring_view(*text));
        case PiaItemType::Bin:
            return std::make_unique<PiaBin>(name, *text);
        default:
            return nullptr;
    }
}

/// The item of a value; null for what is none.
std::unique_ptr<PiaItem> itemOf(const Json& json, std::wstring_view name, PiaItemType type) {
    if (type != PiaItemType::Block) {
        return leafOf(json, name, type);
    }
    struct Level {
        const Json* items;
        std::size_t next;
        PiaBlock* block;
    };
    auto root = std::make_unique<PiaBlock>(name);
    std::vector<Level> levels{{&json, 0, root.get()}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (!level.items->is_array() || levels.size() > deepest) {
            return nullptr;
        }
        if (level.next == level.items->size()) {
            levels.pop_back();
            continue;
        }
        const Json& entry = (*level.items)[level.next++];
        const auto itemName = textOf(member(entry, "name"));
        const auto itemType = typeOf(member(entry, "type"));
        const Json* value = member(entry, "value");
        if (!itemName || itemName->empty() || !itemType || value == nullptr) {
            return nullptr;
        }
        std::unique_ptr<PiaItem> item = *itemType == PiaItemType::Block
                                            ? std::make_unique<PiaBlock>(*itemName)
                                            : leafOf(*value, *itemName, *itemType);
        PiaItem* const added = item.get();
        if (added == nullptr || !adopt(*level.block, std::move(item))) {
            return nullptr;
        }
        if (*itemType == PiaItemType::Block) {
            levels.push_back({value, 0, static_cast<PiaBlock*>(added)});
        }
    }
    return root;
}

std::optional<DifferenceStep> stepOf(const Json& json) {
    constexpr std::size_t mostTurns = PiaLimits{}.items;
    DifferenceStep step;
    if (json.is_string()) {
        const std::optional<std::wstring> name = textOf(&json);
        step.name = name.value_or(std::wstring());
        return step.name.empty() ? std::nullopt : std::optional(std::move(step));
    }
    if (const Json* color = member(json, "color")) {
        step.kind = Kind::Color;
        step.number = countOf(color, CAciTable::count).value_or(0);
        return step.number == 0 ? std::nullopt : std::optional(std::move(step));
    }
    const std::optional<std::wstring> name = textOf(member(json, "entry"));
    const Json* turn = member(json, "turn");
    const Json* type = member(json, "type");
    step.kind = Kind::Entry;
    step.name = name.value_or(std::wstring());
    step.number = countOf(turn, mostTurns).value_or(0);
    step.valueType = typeOf(type);
    const bool isWhole = name && (turn == nullptr || countOf(turn, mostTurns)) &&
                         (type == nullptr || step.valueType);
    return isWhole ? std::optional(std::move(step)) : std::nullopt;
}

std::optional<double> numberOf(const Json* json) {
    return json != nullptr && json->is_number() ? std::optional(json->get<double>()) : std::nullopt;
}

bool readPlace(const Json* json, std::vector<DifferenceStep>& place) {
    if (json == nullptr || !json->is_array() || json->empty() || json->size() > deepest) {
        return false;
    }
    for (const Json& entry : *json) {
        std::optional<DifferenceStep> step = stepOf(entry);
        if (!step) {
            return false;
        }
        place.push_back(std::move(*step));
    }
    return place.back().kind != Kind::Color;
}

FileKind kindOf(const Json& json) {
    const Json* before = member(json, "before");
    const std::optional<std::wstring> word =
        before == nullptr ? std::nullopt : textOf(member(*before, "kind"));
    for (const FileKind kind : {FileKind::Ctb, FileKind::Stb, FileKind::Pc3, FileKind::Pmp}) {
        if (word && ut::encodeUtf8(*word) == kindWord(kind)) {
            return kind;
        }
    }
    return FileKind::Pia;
}

std::optional<Difference> changeOf(const Json& json) {
    using Change = Difference::Change;
    constexpr std::array<std::pair<std::wstring_view, Change>, 3> words{
        {{L"added", Change::Added}, {L"removed", Change::Removed}, {L"changed", Change::Changed}}};
    Difference change;
    const std::optional<std::wstring> word = textOf(member(json, "change"));
    const auto known = std::ranges::find_if(
        words, [&](const auto& entry) { return word && entry.first == *word; });
    const auto type = typeOf(member(json, "type"));
    if (known == words.end() || !type || !readPlace(member(json, "place"), change.place)) {
        return std::nullopt;
    }
    change.change = known->second;
    change.type = *type;
    const auto take = [&](const char* name, Change without, std::shared_ptr<const PiaItem>& item) {
        const Json* value = member(json, name);
        if (change.change == without) {
            return true;
        }
        if (value != nullptr) {
            item = itemOf(*value, change.place.back().name, change.type);
        }
        return item != nullptr;
    };
    if (!take("before", Change::Added, change.before) ||
        !take("after", Change::Removed, change.after)) {
        return std::nullopt;
    }
    change.millimetresBefore = numberOf(member(json, "before_mm"));
    change.millimetresAfter = numberOf(member(json, "after_mm"));
    return change;
}

}  // namespace

EditResult readChanges(std::string_view json, ChangeList& changes) {
    const auto invalid = [](std::string reason) {
        return refuse(EditFault::ValueInvalid, std::move(reason));
    };
    if (isTooDeep(json)) {
        return invalid("the JSON nests too deeply");
    }
    const Json parsed = Json::parse(json.begin(), json.end(), nullptr, false);
    if (parsed.is_discarded()) {
        return invalid("this is not one JSON object");
    }
    const std::optional<std::wstring> schema = textOf(member(parsed, "schema"));
    const Json* differences = member(parsed, "differences");
    if (schema != L"platen.diff/1" || differences == nullptr || !differences->is_array()) {
        return invalid("these are no changes as platen diff --json prints them");
    }
    ChangeList read{kindOf(parsed), {}};
    for (const Json& entry : *differences) {
        std::optional<Difference> change = changeOf(entry);
        if (!change) {
            return invalid("change number " + std::to_string(read.changes.size() + 1) +
                           " cannot be understood");
        }
        read.changes.push_back(std::move(*change));
    }
    changes = std::move(read);
    return {};
}

}  // namespace platen

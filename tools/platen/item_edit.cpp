#include "tools/platen/item_edit.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/arguments/numbers.h"
#include "tools/platen/arguments/suggest.h"

namespace platen {
namespace {

constexpr const char* typeWanted =
    "; a new item names its type behind the path: :str, :num, :bool, :bin (hexadecimal) or :block";

std::string quoted(std::wstring_view text) { return '"' + ut::encodeUtf8(text) + '"'; }

std::string word(PiaItemType type) { return ut::encodeUtf8(piaTypeSuffix(type).substr(1)); }

std::optional<bool> flagOf(std::wstring_view text) {
    if (ut::equalNoCase(text, L"TRUE")) {
        return true;
    }
    return ut::equalNoCase(text, L"FALSE") ? std::optional(false) : std::nullopt;
}

bool isHexadecimal(std::wstring_view text) {
    const auto isDigit = [](wchar_t character) {
        return (character >= L'0' && character <= L'9') ||
               (character >= L'A' && character <= L'F') || (character >= L'a' && character <= L'f');
    };
    return text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), isDigit);
}

/// Why an item of this type cannot have this value; empty when it can.
std::string valueFault(PiaItemType type, const std::wstring& value) {
    switch (type) {
        case PiaItemType::Bool:
            return flagOf(value) ? "" : "a bool is TRUE or FALSE, not " + quoted(value);
        case PiaItemType::Num:
            return wholeNumber(ut::encodeUtf8(value))
                       ? ""
                       : quoted(value) + " is no number; write it with a decimal point";
        case PiaItemType::Bin:
            return isHexadecimal(value)
                       ? ""
                       : "a bin is hexadecimal digits, two for each byte, not " + quoted(value);
        case PiaItemType::Block:
            return "this is a block and has no value of its own; name an item in it";
        case PiaItemType::Str:
            break;
    }
    return {};
}

std::vector<std::wstring> namesIn(const PiaBlock& block) {
    std::vector<std::wstring> names;
    for (const PiaItem* item : block.items) {
        names.push_back(item->name);
    }
    return names;
}

/// The block at `path`, or null; an empty path is the root.
PiaBlock* blockAt(PiaBlock& root, std::wstring_view path) {
    if (path.empty()) {
        return &root;
    }
    for (PiaItem* item : piaFindPlace(root, path).items) {
        if (item->type == PiaItemType::Block) {
            return static_cast<PiaBlock*>(item);
        }
    }
    return nullptr;
}

struct SplitPath {
    std::wstring_view parent;
    std::wstring_view name;
};

SplitPath split(std::wstring_view path) {
    const std::size_t slash = path.rfind(L'/');
    return slash == std::wstring_view::npos
               ? SplitPath{{}, path}
               : SplitPath{path.substr(0, slash), path.substr(slash + 1)};
}

/// Why `path` leads nowhere: the first of its names that is not there, what to do about it, and
/// what is there.
std::string nothingAt(PiaBlock& root, std::wstring_view path, std::string_view remedy = {}) {
    SplitPath parts = split(path);
    PiaBlock* parent = blockAt(root, parts.parent);
    while (parent == nullptr) {
        parts = split(parts.parent);
        parent = blockAt(root, parts.parent);
    }
    const std::string where = parts.parent.empty() ? "" : " in " + quoted(parts.parent);
    return "there is no " + quoted(parts.name) + where + std::string(remedy) +
           suggestion(parts.name, namesIn(*parent), "platen get shows what is there");
}

std::string severalTypes(const std::vector<PiaItem*>& items) {
    std::string reason = "several items have this name; add a type:";
    for (const PiaItem* item : items) {
        reason += ' ' + ut::encodeUtf8(piaTypeSuffix(item->type));
    }
    return reason;
}

std::unique_ptr<PiaItem> makeItem(std::wstring_view name, PiaItemType type,
                                  const std::wstring& value) {
    switch (type) {
        case PiaItemType::Bool:
            return std::make_unique<PiaBool>(name, flagOf(value).value_or(false));
        case PiaItemType::Str:
            return std::make_unique<PiaStr>(name, value);
        case PiaItemType::Num:
            return std::make_unique<PiaNum>(name, value);
        case PiaItemType::Bin:
            return std::make_unique<PiaBin>(name, value);
        case PiaItemType::Block:
            break;
    }
    return std::make_unique<PiaBlock>(name);
}

/// Where PATH ends: at the first "=" behind the name of an item, since names may hold one, or at
/// the first of all.
std::size_t endOfPath(PiaBlock& root, std::wstring_view assignment) {
    for (std::size_t at = assignment.find(L'='); at != std::wstring_view::npos;
         at = assignment.find(L'=', at + 1)) {
        if (!piaFindPlace(root, assignment.substr(0, at)).items.empty()) {
            return at;
        }
    }
    return assignment.find(L'=');
}

}  // namespace

std::string ItemEditor::remove(std::string_view path) {
    std::wstring wide;
    if (!ut::decodeUtf8(path, wide)) {
        return "the path is not UTF-8";
    }
    const PiaPlace place = piaFindPlace(root_, wide);
    if (place.items.empty()) {
        return nothingAt(root_, wide);
    }
    if (place.items.size() > 1) {
        return severalTypes(place.items);
    }
    changed_ = place.parent->removeItem(place.items.front()) || changed_;
    return {};
}

std::string ItemEditor::assign(std::string_view assignment) {
    std::wstring wide;
    if (!ut::decodeUtf8(assignment, wide)) {
        return "this is not UTF-8";
    }
    const std::size_t end = endOfPath(root_, wide);
    if (end == std::wstring::npos) {
        return wide.ends_with(piaTypeSuffix(PiaItemType::Block))
                   ? add(wide, nullptr)
                   : "this is no PATH=VALUE; a new block is PATH:block";
    }
    const std::wstring path = wide.substr(0, end);
    const std::wstring value = wide.substr(end + 1);
    const PiaPlace place = piaFindPlace(root_, path);
    if (place.items.size() > 1) {
        return severalTypes(place.items);
    }
    return place.items.empty() ? add(path, &value) : setValue(*place.items.front(), value);
}

std::string ItemEditor::setValue(PiaItem& item, const std::wstring& value) {
    if (const std::string fault = valueFault(item.type, value); !fault.empty()) {
        return fault;
    }
    const auto setText = [&](PiaText& text) {
        if (!(text == value)) {
            text = value;
            changed_ = true;
        }
    };
    switch (item.type) {
        case PiaItemType::Bool: {
            auto& flag = static_cast<PiaBool&>(item);
            const bool wanted = flagOf(value).value_or(flag.value);
            changed_ = changed_ || flag.value != wanted;
            flag.value = wanted;
            break;
        }
        case PiaItemType::Block:
            break;
        default:
            setText(static_cast<PiaTextItem&>(item).value);
            break;
    }
    return {};
}

std::string ItemEditor::add(std::wstring_view path, const std::wstring* value) {
    std::wstring_view named = path;
    const std::optional<PiaItemType> type = piaTakeTypeSuffix(named);
    const PiaPlace there = piaFindPlace(root_, named);
    if (!there.items.empty()) {
        const PiaItemType present = there.items.front()->type;
        if (value == nullptr && present == PiaItemType::Block) {
            return {};
        }
        return "the item is a " + word(present) +
               " and keeps its type; delete it in the same command (--delete) to give it another";
    }
    const SplitPath parts = split(named);
    PiaBlock* parent = blockAt(root_, parts.parent);
    if (parent == nullptr) {
        return nothingAt(root_, parts.parent, "; a new block is PATH:block");
    }
    if (!type) {
        return nothingAt(root_, named, typeWanted);
    }
    if (parts.name.empty()) {
        return "an item needs a name";
    }
    if (value == nullptr || *type == PiaItemType::Block) {
        return value == nullptr
                   ? addTo(*parent, parts.name, *type, {})
                   : "a block has no value; leave out the \"=\" and what comes behind it";
    }
    const std::string fault = valueFault(*type, *value);
    return fault.empty() ? addTo(*parent, parts.name, *type, *value) : fault;
}

std::string ItemEditor::addTo(PiaBlock& parent, std::wstring_view name, PiaItemType type,
                              const std::wstring& value) {
    std::unique_ptr<PiaItem> item = makeItem(name, type, value);
    if (!parent.addItem(item.get())) {
        return "the block has such an item already";
    }
    static_cast<void>(item.release());
    changed_ = true;
    return {};
}

}  // namespace platen

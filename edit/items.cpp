#include <platen/edit_items.h>

#include <algorithm>
#include <memory>
#include <utility>

#include <platen/utcore.h>
#include "edit/refusal.h"

namespace platen {
namespace {

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

/// Why an item of this type cannot have this value.
EditResult checkValue(PiaItemType type, const std::wstring& value) {
    const auto invalid = [](std::string reason) {
        return refuse(EditFault::ValueInvalid, std::move(reason));
    };
    switch (type) {
        case PiaItemType::Bool:
            return flagOf(value) ? EditResult()
                                 : invalid("a bool is TRUE or FALSE, not " + quoted(value));
        case PiaItemType::Num:
            return wholeNumber(ut::encodeUtf8(value))
                       ? EditResult()
                       : invalid(quoted(value) + " is no number; write it with a decimal point");
        case PiaItemType::Bin:
            return isHexadecimal(value)
                       ? EditResult()
                       : invalid("a bin is hexadecimal digits, two for each byte, not " +
                                 quoted(value));
        case PiaItemType::Block:
            return invalid("this is a block and has no value of its own; name an item in it");
        case PiaItemType::Str:
            break;
    }
    return {};
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

/// Says the first name of `path` that is not there, and what there is.
EditResult nothingAt(PiaBlock& root, std::wstring_view path, EditFault fault) {
    SplitPath parts = split(path);
    PiaBlock* parent = blockAt(root, parts.parent);
    while (parent == nullptr) {
        parts = split(parts.parent);
        parent = blockAt(root, parts.parent);
    }
    const std::string where = parts.parent.empty() ? "" : " in " + quoted(parts.parent);
    EditRefusal refusal{
        fault, "there is no " + quoted(parts.name) + where, std::wstring(parts.name), {}};
    for (const PiaItem* item : parent->items) {
        refusal.present.emplace_back(item->name.view());
    }
    return refusal;
}

EditResult severalTypes(std::wstring_view path, const std::vector<PiaItem*>& items) {
    EditRefusal refusal{
        EditFault::Ambiguous, "several items have this name; add a type:", std::wstring(path), {}};
    for (const PiaItem* item : items) {
        const std::wstring_view suffix = piaTypeSuffix(item->type);
        refusal.reason += ' ' + ut::encodeUtf8(suffix);
        refusal.present.emplace_back(suffix);
    }
    return refusal;
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

EditResult ItemEditor::remove(std::wstring_view path) {
    const PiaPlace place = piaFindPlace(root_, path);
    if (place.items.empty()) {
        return nothingAt(root_, path, EditFault::NotFound);
    }
    if (place.items.size() > 1) {
        return severalTypes(path, place.items);
    }
    changed_ = place.parent->removeItem(place.items.front()) || changed_;
    return {};
}

EditResult ItemEditor::assign(std::wstring_view assignment) {
    const std::size_t end = endOfPath(root_, assignment);
    if (end != std::wstring_view::npos) {
        return set(assignment.substr(0, end), std::wstring(assignment.substr(end + 1)));
    }
    return assignment.ends_with(piaTypeSuffix(PiaItemType::Block))
               ? addBlock(assignment)
               : refuse(EditFault::ValueInvalid,
                        "this is no PATH=VALUE; a new block is PATH:block");
}

EditResult ItemEditor::set(std::wstring_view path, const std::wstring& value) {
    const PiaPlace place = piaFindPlace(root_, path);
    if (place.items.size() > 1) {
        return severalTypes(path, place.items);
    }
    return place.items.empty() ? add(path, &value) : setValue(*place.items.front(), value);
}

EditResult ItemEditor::addBlock(std::wstring_view path) { return add(path, nullptr); }

EditResult ItemEditor::setValue(PiaItem& item, const std::wstring& value) {
    if (EditResult done = checkValue(item.type, value); !done) {
        return done;
    }
    const auto setText = [&](auto& text) {
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

/// A null value adds a block.
EditResult ItemEditor::add(std::wstring_view path, const std::wstring* value) {
    std::wstring_view named = path;
    const std::optional<PiaItemType> type = piaTakeTypeSuffix(named);
    const PiaPlace there = piaFindPlace(root_, named);
    if (!there.items.empty()) {
        const PiaItemType present = there.items.front()->type;
        if (value == nullptr && present == PiaItemType::Block) {
            return {};
        }
        return refuse(EditFault::TypeKept,
                      "the item is a " + word(present) + " and keeps its type");
    }
    const SplitPath parts = split(named);
    PiaBlock* parent = blockAt(root_, parts.parent);
    if (parent == nullptr) {
        return nothingAt(root_, parts.parent, EditFault::BlockNotFound);
    }
    if (!type) {
        return nothingAt(root_, named, EditFault::TypeMissing);
    }
    if (parts.name.empty()) {
        return refuse(EditFault::NameInvalid, "an item needs a name");
    }
    if (value != nullptr && *type == PiaItemType::Block) {
        return refuse(EditFault::ValueInvalid,
                      "a block has no value; leave out the \"=\" and what comes behind it");
    }
    if (value == nullptr && *type != PiaItemType::Block) {
        return refuse(EditFault::ValueInvalid, "a new item needs a value");
    }
    if (EditResult done = value == nullptr ? EditResult() : checkValue(*type, *value); !done) {
        return done;
    }
    std::unique_ptr<PiaItem> item =
        makeItem(parts.name, *type, value == nullptr ? std::wstring() : *value);
    if (!parent->addItem(item.get())) {
        return refuse(EditFault::NameTaken, "the block has such an item already");
    }
    static_cast<void>(item.release());
    changed_ = true;
    return {};
}

}  // namespace platen

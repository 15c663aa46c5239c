#include "pia/node_keys.h"

#include <algorithm>

std::wstring PiaPath::join(std::wstring_view key) const {
    std::wstring text(key);
    for (const PiaPath* step = this; step != nullptr; step = step->parent) {
        if (!step->name.empty()) {
            text.insert(0, text.empty() ? 0 : 1, L'/');
            text.insert(0, step->name);
        }
    }
    return text;
}

namespace node_keys {

namespace {

const wchar_t* nameOf(PiaItemType type) {
    switch (type) {
        case PiaItemType::Bin:
            return L"a binary value";
        case PiaItemType::Block:
            return L"a block";
        case PiaItemType::Bool:
            return L"TRUE or FALSE";
        case PiaItemType::Str:
            return L"a text";
        case PiaItemType::Num:
            return L"a number";
    }
    return L"";
}

/// An item of that name of whatever type, otherwise the block.
const PiaItem& nearest(const PiaBlock& block, std::wstring_view name) {
    const auto* found = std::find_if(block.items.begin(), block.items.end(),
                                     [&](const PiaItem* item) { return item->name == name; });
    return found == block.items.end() ? static_cast<const PiaItem&>(block) : **found;
}

void reportWithReason(PiaReport& report, PiaCode code, const PiaPath& path, const PiaReport& why) {
    PiaFinding finding;
    finding.code = code;
    finding.line = known(path.line);
    finding.path = path.join({});
    if (const auto& reason = why.failure()) {
        const std::string_view word = piaCodeWord(reason->code);
        finding.expected = reason->expected;
        finding.found = std::wstring(word.begin(), word.end()) + L" at " + reason->path;
    }
    report.warn(std::move(finding));
}

}  // namespace

bool reportUnreadable(PiaReport& report, const PiaBlock& block, const PiaPath& path,
                      std::wstring_view key, PiaItemType type, const PiaItem* item) {
    PiaFinding finding;
    finding.code = item == nullptr ? PiaCode::KeyMissing : PiaCode::ValueInvalid;
    finding.line = known((item == nullptr ? nearest(block, key) : *item).line());
    finding.path = path.join(item == nullptr ? key : item->name.view());
    finding.expected = nameOf(type);
    if (item != nullptr && type == PiaItemType::Num) {
        finding.found = static_cast<const PiaNum*>(item)->value.str();
    }
    return report.fail(std::move(finding));
}

void reportDropped(PiaReport& report, const PiaPath& path, const PiaReport& why) {
    reportWithReason(report, PiaCode::BlockDropped, path, why);
}

void reportPartlyRead(PiaReport& report, const PiaPath& path, const PiaReport& why) {
    reportWithReason(report, PiaCode::EntryPartlyRead, path, why);
}

void passWarnings(PiaReport& report, const PiaReport& part) {
    for (const PiaFinding& finding : part.warnings()) {
        report.warn(finding);
    }
}

}  // namespace node_keys

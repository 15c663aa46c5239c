#include "pia/node_keys.h"

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

}  // namespace

bool reportUnreadable(PiaReport& report, const PiaBlock& block, const PiaPath& path,
                      std::wstring_view key, PiaItemType type) {
    PiaFinding finding;
    finding.path = path.join(key);
    finding.expected = nameOf(type);
    if (const PiaItem* item = block.findItem(key, type)) {
        finding.code = PiaCode::ValueInvalid;
        finding.found = static_cast<const PiaNum*>(item)->value.str();
    } else {
        finding.code = PiaCode::KeyMissing;
    }
    return report.fail(std::move(finding));
}

}  // namespace node_keys

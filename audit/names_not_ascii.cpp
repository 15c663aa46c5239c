#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "audit/facts.h"

namespace platen {
namespace {

/// Other texts may hold any characters without anything being found by them.
bool isNameKey(std::wstring_view key) {
    return key.ends_with(L"name") || key.ends_with(L"default_size");
}

bool isPlain(std::wstring_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](wchar_t character) { return static_cast<char32_t>(character) < 0x80; });
}

}  // namespace

void findNamesNotAscii(const PiaInput& input, const AuditSettings& settings, AuditData& data) {
    const bool readsAlike =
        input.container().encoding == PiaEncoding::Utf8 || ut::isAscii(input.body());
    if (readsAlike) {
        return;
    }
    std::set<std::wstring> names;
    for (PiaWalk walk(*input.root()); walk.next();) {
        if (walk.isEnd() || walk.item().type != PiaItemType::Str ||
            !isNameKey(walk.item().name.view())) {
            continue;
        }
        std::wstring name = static_cast<const PiaStr&>(walk.item()).value;
        if (!isPlain(name)) {
            names.insert(std::move(name));
        }
    }
    if (names.empty()) {
        return;
    }
    AuditFinding finding =
        findingAbout(data, AuditCode::NameNotAscii,
                     countInWords(names.size(), "name has", "names have") +
                         " characters that stand for others in another code page");
    for (const std::wstring& name : names) {
        addDetail(finding, {.text = nameInQuotes(name)}, settings.mostDetails);
    }
    data.findings.push_back(std::move(finding));
}

}  // namespace platen

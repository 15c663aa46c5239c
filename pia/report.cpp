#include <algorithm>
#include <iterator>

#include <platen/pia_paths.h>
#include <platen/utcore.h>
#include "pia/report_table.h"

namespace {

constexpr bool tableFollowsTheCodes() {
    for (std::size_t index = 0; index < std::size(piaCodeTable); ++index) {
        if (piaCodeTable[index].code != static_cast<PiaCode>(index)) {
            return false;
        }
    }
    return std::size(piaCodeTable) == static_cast<std::size_t>(PiaCode::SettingsRefused) + 1;
}
static_assert(tableFollowsTheCodes());

const PiaCodeEntry& entryOf(PiaCode code) { return piaCodeTable[static_cast<std::size_t>(code)]; }

/// A text for one line of a message: short, and without characters that would disturb a terminal.
std::string quoted(std::wstring_view text) {
    constexpr std::size_t longest = 60;
    std::wstring shown(text.substr(0, longest));
    std::replace_if(
        shown.begin(), shown.end(), [](wchar_t c) { return c < L' ' || c == L'\x7F'; }, L'?');
    return "\"" + ut::encodeUtf8(shown) + (text.size() > longest ? "...\"" : "\"");
}

}  // namespace

const char* piaCodeWord(PiaCode code) { return entryOf(code).word; }
const char* piaCodeMessage(PiaCode code) { return entryOf(code).message; }
const char* piaCodeRemedy(PiaCode code) { return entryOf(code).remedy; }

std::string PiaFinding::describe() const {
    std::string text = piaCodeMessage(code);
    if (line) {
        text += ", line " + std::to_string(*line);
    }
    if (offset) {
        text += ", byte " + std::to_string(*offset);
    }
    if (!path.empty()) {
        text += ", at " + quoted(path);
    }
    if (!expected.empty()) {
        text += ", expected " + ut::encodeUtf8(expected);
    }
    if (!found.empty()) {
        text += ", found " + quoted(found);
    }
    return text;
}

void PiaReport::warn(PiaFinding finding) {
    ++warningCount_;
    if (warnings_.size() < maxWarnings) {
        warnings_.push_back(std::move(finding));
    }
}

bool PiaReport::fail(PiaFinding finding) {
    if (!failure_) {
        failure_ = std::move(finding);
    }
    return false;
}

void PiaReport::clear() { *this = {}; }

void PiaReport::locate(const PiaBlock& root) {
    const auto locateOne = [&](PiaFinding& finding) {
        if (!finding.line && !finding.offset && !finding.path.empty()) {
            if (const std::uint32_t line = piaLineOf(root, finding.path); line != 0) {
                finding.line = line;
            }
        }
    };
    if (failure_) {
        locateOne(*failure_);
    }
    std::for_each(warnings_.begin(), warnings_.end(), locateOne);
}

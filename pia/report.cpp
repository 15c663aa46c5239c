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
    return std::size(piaCodeTable) == static_cast<std::size_t>(PiaCode::PrivateDataLength) + 1;
}
static_assert(tableFollowsTheCodes());

const PiaCodeEntry& entryOf(PiaCode code) { return piaCodeTable[static_cast<std::size_t>(code)]; }

/// A text among others in a line; the whole of it is in the finding.
std::string excerpt(std::wstring_view text) {
    constexpr std::size_t longest = 60;
    const std::wstring_view shown = ut::utf16Prefix(text, longest);
    return ut::encodeUtf8(shown) + (shown.size() < text.size() ? "..." : "");
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
        text += ", at " + excerpt(path);
    }
    if (!expected.empty()) {
        // Of the library's making, such as all the folders that were searched.
        text += ", expected " + ut::encodeUtf8(expected);
    }
    if (!found.empty()) {
        text += ", found \"" + excerpt(found) + "\"";
    }
    return ut::printable(text);
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

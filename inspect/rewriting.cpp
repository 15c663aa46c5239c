#include "inspect/rewriting.h"

#include <cstddef>
#include <string>

#include <platen/pia_text_forms.h>
#include <platen/utcore.h>
#include "pia/plain_lines.h"

namespace platen {
namespace {

/// Characters of a line but for its name and the spaces before it, as far as they are bound to the
/// limit: a binary value may go on over many reads.
std::size_t restOfLine(const PiaItem& item) {
    const std::size_t before = pia_body::frameOf(item.type).before.size();
    switch (item.type) {
        case PiaItemType::Str:
            return before + static_cast<const PiaStr&>(item).value.size();
        case PiaItemType::Num:
            return before + static_cast<const PiaNum&>(item).value.size();
        case PiaItemType::Bool:
            return before + std::string_view("FALSE").size();
        case PiaItemType::Bin:
        case PiaItemType::Block:
            break;
    }
    return before;
}

/// Whether each line fits when it is indented by its depth, as writers do.
bool linesFit(const PiaBlock& root) {
    for (PiaWalk walk(root); walk.next();) {
        if (!walk.isEnd() && (walk.depth() >= pia_body::depthLimit ||
                              walk.depth() + walk.item().name.size() + restOfLine(walk.item()) >
                                  pia_body::lineLimit)) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool surelyReadsBack(const PiaInput& input) {
    constexpr int jsonVersion = 3;
    // What was read from plain lines without a warning has names and values that stand in such
    // lines again. Only the end of a value may be lost, a carriage return or what does not fit.
    return input.container().version != jsonVersion && input.report().warningCount() == 0 &&
           ut::isAscii(input.body()) && input.body().find('\r') == std::string_view::npos &&
           linesFit(*input.root());
}

void checkRewriting(const PiaInput& input, FindingList& findings) {
    if (surelyReadsBack(input)) {
        return;
    }
    std::string body;
    PiaReport report;
    const bool done = piaWriteBody(*input.root(), body, report);
    findings.addWarnings(report);
    if (!done && report.failure()) {
        findings.warn(*report.failure());
    }
}

}  // namespace platen

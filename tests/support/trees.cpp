#include "tests/support/trees.h"

#include <algorithm>

#include <platen/utcore.h>
#include "pia/container.h"

namespace {

bool equalItems(const PiaItem& left, const PiaItem& right) {
    if (left.type != right.type || left.name != right.name) {
        return false;
    }
    switch (left.type) {
        case PiaItemType::Block:
            return true;
        case PiaItemType::Bool:
            return static_cast<const PiaBool&>(left).value ==
                   static_cast<const PiaBool&>(right).value;
        default:
            return static_cast<const PiaTextItem&>(left).value ==
                   static_cast<const PiaTextItem&>(right).value;
    }
}

}  // namespace

bool equalTrees(const PiaBlock& left, const PiaBlock& right) {
    PiaWalk walk(left);
    PiaWalk other(right);
    while (walk.next()) {
        if (!other.next() || walk.isEnd() != other.isEnd() ||
            !equalItems(walk.item(), other.item())) {
            return false;
        }
    }
    return !other.next();
}

std::vector<std::uint32_t> linesOf(const PiaBlock& block) {
    std::vector<std::uint32_t> lines;
    for (PiaWalk walk(block); walk.next();) {
        if (!walk.isEnd()) {
            lines.push_back(walk.item().line());
        }
    }
    return lines;
}

bool namesItsLine(std::string_view body, const PiaFinding& finding) {
    std::string path = ut::encodeUtf8(finding.path);
    if (finding.code == PiaCode::KeyMissing) {
        path.resize(path.find('/') == std::string::npos ? 0 : path.rfind('/'));
    }
    if (path.empty()) {
        return finding.line == 1U;
    }
    for (std::uint64_t line = 1; line < finding.line.value_or(0); ++line) {
        body.remove_prefix(std::min(body.find('\n'), body.size() - 1) + 1);
    }
    body.remove_prefix(std::min(body.find_first_not_of(' '), body.size()));
    const std::string name = path.substr(path.rfind('/') + 1);
    return finding.line && body.starts_with(name) &&
           (body.substr(name.size()).starts_with('=') || body.substr(name.size()).starts_with('{'));
}

void EntryRecorder::take(const PiaBlock& entry) {
    text += ut::encodeUtf8(entry.name) + '{' + std::to_string(entry.items.size()) + '\n';
    text += piaBodyText(entry) + "}\n" + std::to_string(entry.line());
    for (const std::uint32_t line : linesOf(entry)) {
        text += ' ' + std::to_string(line);
    }
    text += '\n';
    // Lookups keep what they learn in the block, which the next entry must not find.
    for (const PiaItem* item : entry.items) {
        if (entry.findItem(item->name, item->type) != item) {
            text += "a name that is not found\n";
        }
    }
}

std::string fileAround(std::string_view body, PiaKind kind) {
    ut::ByteBuffer stream;
    if (ut::ZlibEngine::compress(body, stream, 6) != 0) {
        return {};
    }
    const auto length = static_cast<std::uint32_t>(body.size());
    return pia_header::encode(static_cast<int>(kind), length, stream.view()).append(stream.view());
}

std::string bodyOf(std::string_view file) {
    ut::ByteBuffer body;
    std::size_t consumed = 0;
    auto stop = ut::ZlibEngine::Stop::None;
    if (file.size() < pia_header::size ||
        ut::ZlibEngine::decompress(file.substr(pia_header::size), body, 0, PiaLimits().bodyBytes,
                                   consumed, stop) != 0) {
        return {};
    }
    return std::string(body.view());
}

#include "tests/support/trees.h"

#include <utility>
#include <vector>

#include "pia/body_writer.h"
#include "pia/container.h"
#include "utcore.h"

bool equalTrees(const PiaBlock& left, const PiaBlock& right) {
    std::vector<std::pair<const PiaBlock*, const PiaBlock*>> pending{{&left, &right}};
    const auto equalItems = [&](const PiaItem& one, const PiaItem& other) {
        if (one.type != other.type || one.name != other.name.view()) {
            return false;
        }
        switch (one.type) {
            case PiaItemType::Bin:
                return static_cast<const PiaBin&>(one).value ==
                       static_cast<const PiaBin&>(other).value;
            case PiaItemType::Block:
                pending.emplace_back(&static_cast<const PiaBlock&>(one),
                                     &static_cast<const PiaBlock&>(other));
                return true;
            case PiaItemType::Bool:
                return static_cast<const PiaBool&>(one).value ==
                       static_cast<const PiaBool&>(other).value;
            case PiaItemType::Str:
                return static_cast<const PiaStr&>(one).value ==
                       static_cast<const PiaStr&>(other).value;
            case PiaItemType::Num:
                return static_cast<const PiaNum&>(one).value ==
                       static_cast<const PiaNum&>(other).value;
        }
        return false;
    };
    while (!pending.empty()) {
        const auto [one, other] = pending.back();
        pending.pop_back();
        if (one->items.size() != other->items.size()) {
            return false;
        }
        for (std::size_t index = 0; index < one->items.size(); ++index) {
            if (!equalItems(*one->items[index], *other->items[index])) {
                return false;
            }
        }
    }
    return true;
}

void EntryRecorder::take(const PiaBlock& entry) {
    text += ut::encodeUtf8(entry.name) + '{' + std::to_string(entry.items.size()) + '\n';
    text += piaBodyText(entry) + "}\n";
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

#include "tests/support/trees.h"

#include <algorithm>

#include <platen/utcore.h>
#include "pia/container.h"

namespace {

template <class Item>
bool equalValues(const PiaItem& left, const PiaItem& right) {
    return static_cast<const Item&>(left).value == static_cast<const Item&>(right).value;
}

bool equalItems(const PiaItem* left, const PiaItem* right) {
    if (left->type != right->type || left->name != right->name.view()) {
        return false;
    }
    switch (left->type) {
        case PiaItemType::Bin:
            return equalValues<PiaBin>(*left, *right);
        case PiaItemType::Block:
            return equalTrees(static_cast<const PiaBlock&>(*left),
                              static_cast<const PiaBlock&>(*right));
        case PiaItemType::Bool:
            return equalValues<PiaBool>(*left, *right);
        case PiaItemType::Str:
            return equalValues<PiaStr>(*left, *right);
        case PiaItemType::Num:
            return equalValues<PiaNum>(*left, *right);
    }
    return false;
}

}  // namespace

bool equalTrees(const PiaBlock& left, const PiaBlock& right) {
    return std::equal(left.items.begin(), left.items.end(), right.items.begin(), right.items.end(),
                      equalItems);
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

#include "pia/body_writer.h"

#include <string>
#include <string_view>
#include <vector>

#include <platen/utcore.h>
#include "pia/file_body.h"

using pia_body::FileBody;
using pia_body::Frame;
using pia_body::frameOf;
using pia_body::Name;

namespace {

/// Walks over a tree in written order, without recursion.
class Walk {
public:
    explicit Walk(const PiaBlock& root) : levels_{{&root, 0}} {}

    /// Depth of the children that are visited now.
    std::size_t depth() const { return levels_.size() - 1; }

    /// Calls `item(child)` for every child and `close()` after each inner block; stops when one of
    /// them returns false.
    template <class Item, class Close>
    bool run(Item item, Close close) {
        while (true) {
            Level& level = levels_.back();
            if (level.next == level.block->items.size()) {
                levels_.pop_back();
                if (levels_.empty()) {
                    return true;
                }
                close();
                continue;
            }
            const PiaItem& child = *level.block->items[level.next++];
            if (!item(child)) {
                return false;
            }
            if (child.type == PiaItemType::Block) {
                levels_.push_back({static_cast<const PiaBlock*>(&child), 0});
            }
        }
    }

private:
    struct Level {
        const PiaBlock* block;
        std::size_t next;
    };
    std::vector<Level> levels_;
};

/// Calls `reader` with the value of an item as a view of ASCII or of wide text; that of a block is
/// empty.
template <class Reader>
auto readValue(const PiaItem& item, Reader reader) {
    switch (item.type) {
        case PiaItemType::Bin:
            return static_cast<const PiaBin&>(item).value.read(reader);
        case PiaItemType::Bool:
            return reader(
                std::string_view(static_cast<const PiaBool&>(item).value ? "TRUE" : "FALSE"));
        case PiaItemType::Str:
            return static_cast<const PiaStr&>(item).value.read(reader);
        case PiaItemType::Num:
            return static_cast<const PiaNum&>(item).value.read(reader);
        case PiaItemType::Block:
            break;
    }
    return reader(std::string_view());
}

std::wstring valueOf(const PiaItem& item) {
    return readValue(item, [](auto text) { return std::wstring(text.begin(), text.end()); });
}

}  // namespace

bool piaWriteBody(const PiaBlock& root, std::string& body, PiaReport& report) {
    FileBody file(body, report);
    const bool done = Walk(root).run(
        [&](const PiaItem& item) {
            const Name name{item.name, true};
            return item.type == PiaItemType::Block ? file.open(name)
                                                   : readValue(item, [&](auto value) {
                                                         return file.add(name, item.type, value);
                                                     });
        },
        [&] { file.close(); });
    file.finish();
    return done;
}

std::string piaBodyText(const PiaBlock& block) {
    std::string text;
    Walk walk(block);
    walk.run(
        [&](const PiaItem& item) {
            const Frame frame = frameOf(item.type);
            text.append(walk.depth(), ' ').append(ut::encodeUtf8(item.name));
            text.append(frame.before).append(ut::encodeUtf8(valueOf(item)));
            text.append(frame.after).push_back('\n');
            return true;
        },
        [&] { text.append(walk.depth(), ' ').append("}\n"); });
    return text;
}

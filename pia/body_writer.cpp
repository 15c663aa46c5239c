#include "pia/body_writer.h"

#include <string>
#include <string_view>

#include <platen/utcore.h>
#include "pia/access.h"
#include "pia/file_body.h"

using pia_body::FileBody;
using pia_body::Frame;
using pia_body::frameOf;
using pia_body::Name;

namespace {

/// Calls `reader` with the value of an item as a view of ASCII or of wide text; that of a block is
/// empty.
template <class Reader>
auto readValue(const PiaItem& item, Reader reader) {
    switch (item.type) {
        case PiaItemType::Bool:
            return reader(
                std::string_view(static_cast<const PiaBool&>(item).value ? "TRUE" : "FALSE"));
        case PiaItemType::Block:
            return reader(std::string_view());
        default:
            return PiaAccess::read(static_cast<const PiaTextItem&>(item).value, reader);
    }
}

std::wstring valueOf(const PiaItem& item) {
    return readValue(item, [](auto text) { return std::wstring(text.begin(), text.end()); });
}

}  // namespace

bool piaWriteBody(const PiaBlock& root, std::string& body, PiaReport& report) {
    FileBody file(body, report);
    const auto add = [&](const PiaItem& item) {
        const Name name{item.name, true};
        return item.type == PiaItemType::Block
                   ? file.open(name)
                   : readValue(item, [&](auto value) { return file.add(name, item.type, value); });
    };
    bool done = true;
    for (PiaWalk walk(root); done && walk.next();) {
        if (walk.isEnd()) {
            file.close();
        } else {
            done = add(walk.item());
        }
    }
    file.finish();
    return done;
}

std::string piaBodyText(const PiaBlock& block) {
    std::string text;
    for (PiaWalk walk(block); walk.next();) {
        text.append(walk.depth(), ' ');
        if (walk.isEnd()) {
            text.append("}\n");
            continue;
        }
        const PiaItem& item = walk.item();
        const Frame frame = frameOf(item.type);
        text.append(ut::encodeUtf8(item.name)).append(frame.before);
        text.append(ut::encodeUtf8(valueOf(item))).append(frame.after).push_back('\n');
    }
    return text;
}

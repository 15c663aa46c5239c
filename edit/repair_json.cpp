#include "edit/repair_json.h"

#include <algorithm>
#include <cstddef>

namespace platen {
namespace {

/// Goes through JSON text up to a place where it is known to be sound.
class JsonScan {
public:
    explicit JsonScan(std::string_view text) : text_(text), at_(text.find('{')) {}

    void runTo(std::size_t end) {
        for (; at_ < end; ++at_) {
            step(text_[at_]);
        }
    }

    /// Behind the last value that is whole.
    std::size_t lastWhole() const { return lastWhole_; }

    /// What closes the objects and arrays that are open.
    std::string closing() const {
        std::string closing;
        std::transform(open_.rbegin(), open_.rend(), std::back_inserter(closing),
                       [](char bracket) { return bracket == '{' ? '}' : ']'; });
        return closing;
    }

private:
    bool expectsValue() const { return afterColon_ || (!open_.empty() && open_.back() == '['); }

    void step(char character) {
        if (inString_) {
            const bool ends = character == '"' && !escaped_;
            escaped_ = character == '\\' && !escaped_;
            inString_ = !ends;
            if (ends && expectsValue()) {
                lastWhole_ = at_ + 1;
            }
            return;
        }
        switch (character) {
            case '"':
                inString_ = true;
                break;
            case ':':
                afterColon_ = true;
                break;
            case ',':
                // Numbers and words end here.
                lastWhole_ = expectsValue() ? at_ : lastWhole_;
                afterColon_ = false;
                break;
            case '{':
            case '[':
                open_.push_back(character);
                afterColon_ = false;
                break;
            case '}':
            case ']':
                if (!open_.empty()) {
                    open_.pop_back();
                }
                lastWhole_ = at_ + 1;
                afterColon_ = true;
                break;
            default:
                break;
        }
    }

    std::string_view text_;
    std::size_t at_;
    std::size_t lastWhole_ = 0;
    std::string open_;
    bool inString_ = false;
    bool escaped_ = false;
    bool afterColon_ = false;
};

}  // namespace

std::string salvageJson(std::string_view text, const PiaReadOptions& reading, RepairNotes& notes) {
    PiaInput input;
    if (input.openBytes(text, reading) || !input.report().failure()->offset) {
        return std::string(text);
    }
    const std::uint64_t fault = *input.report().failure()->offset;
    JsonScan scan(text);
    scan.runTo(static_cast<std::size_t>(std::min<std::uint64_t>(fault, text.size())));
    const std::size_t end = scan.lastWhole();
    JsonScan again(text);
    again.runTo(end);
    notes.assume(
        {.code = RepairCode::JsonCut, .offset = fault, .taken = std::to_wstring(end) + L" bytes"});
    notes.lose({.unit = Loss::Unit::Bytes, .count = text.size() - end, .offset = end});
    return std::string(text.substr(0, end)) + again.closing();
}

}  // namespace platen

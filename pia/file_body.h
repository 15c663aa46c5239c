/// The body of a file that is being written, line by line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include "pia/plain_lines.h"

namespace pia_body {

/// Whether a reader finds this value again in its line, which holds no line feed.
bool valueReadsBack(std::wstring_view value, PiaItemType type);

class FileBody {
public:
    /// Borrows both.
    FileBody(std::string& body, PiaReport& report) : body_(body), report_(report) {}

    /// Number of open blocks.
    std::size_t depth() const { return depth_; }

    /// Adds the line of an item. False, with the reason in the report, at a line break.
    template <class Char>
    bool add(const Name& name, PiaItemType type, std::basic_string_view<Char> value) {
        makeRoom();
        return lines_.add(depth_, name, type, value) ||
               addCarefully(name.text, type, std::wstring(value.begin(), value.end()));
    }
    /// Adds a number or flag that was formatted here.
    bool addFormatted(const Name& name, PiaItemType type, std::string_view value) {
        makeRoom();
        return lines_.addFormatted(depth_, name, value) || add(name, type, value);
    }
    /// Notes that a number is none that a reader takes; false.
    bool refuse(const Name& name, double number);
    bool open(const Name& name);
    void close();
    /// Brings everything into the body.
    void finish();

private:
    void makeRoom() {
        if (lines_.isFull()) {
            lines_.moveTo(body_);
        }
    }
    std::size_t indentation() const;
    std::wstring pathOf(std::wstring_view name) const;
    bool addCarefully(std::wstring_view name, PiaItemType type, const std::wstring& value);
    /// Appends what `room` UTF-16 units take of `text` and returns how many did not convert.
    std::size_t append(std::wstring_view text, std::size_t& room, bool& cut);
    void appendFrame(std::string_view frame, std::size_t& room, bool& cut);

    PlainLines lines_;
    std::string& body_;
    PiaReport& report_;
    std::size_t depth_ = 0;
    /// True while every line was ASCII.
    bool onlyPlain_ = true;
    /// Of the open blocks, and of some that were closed.
    std::vector<std::wstring> blockNames_;
};

}  // namespace pia_body

/// The reads of a body: at most 511 bytes at a time, line feeds removed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <platen/pia.h>

/// Cuts a body into the pieces that its reader takes. A line of more than 511 bytes, its line feed
/// included, comes in several pieces, the last of which may be empty. A carriage return before a
/// line feed is dropped. A zero byte ends a piece; what follows it in the same read is lost, which
/// is noted in the report.
class PiaBodyLines {
public:
    /// Bytes that one read takes, the line feed included.
    static constexpr std::size_t readSize = 511;

    PiaBodyLines() = default;
    /// Borrows `body`.
    explicit PiaBodyLines(std::string_view body);

    /// The next piece; false at the end of the body.
    bool next(std::string_view& piece, PiaReport& report);

    /// Where the next line begins, when `atLineStart`; and the end of the body.
    const char* position() const { return position_; }
    const char* end() const { return body_.data() + body_.size(); }
    bool atLineStart() const { return !insideLine_; }
    bool holdsNul() const { return holdsNul_; }
    /// Takes a whole line, which the caller has read itself, when `atLineStart`.
    void takeLine(const char* nextLine) { takeLines(1, position_, nextLine); }
    /// Takes `count` of them, the last of which begins at `last`.
    void takeLines(std::size_t count, const char* last, const char* nextLine) {
        pieceStart_ = last;
        position_ = nextLine;
        line_ += count;
    }

    /// Byte offset of the piece that `next` gave last.
    std::uint64_t offset() const { return static_cast<std::uint64_t>(pieceStart_ - body_.data()); }
    /// Its line, from 1.
    std::uint64_t line() const { return line_; }
    /// True when text of the same line comes with the next piece.
    bool lineGoesOn() const { return insideLine_ && position_ != textEnd_; }

private:
    void startLine();
    void cutAtNul(std::string_view& piece, PiaReport& report) const;

    std::string_view body_;
    const char* position_ = nullptr;
    const char* pieceStart_ = nullptr;
    /// End of the current line's text; equal to `position_` between lines.
    const char* textEnd_ = nullptr;
    /// Where the next line begins.
    const char* nextLine_ = nullptr;
    std::uint64_t line_ = 0;
    bool insideLine_ = false;
    bool endsWithFeed_ = false;
    bool holdsNul_ = false;
};

/// Decodes pieces of a body to wide text.
class PiaLineDecoder {
public:
    PiaLineDecoder() = default;
    explicit PiaLineDecoder(PiaEncoding encoding) : encoding_(encoding) {}

    /// Replaces `text`. A piece that is not in the encoding of the body is decoded byte by byte,
    /// which is noted in the report with the place that `lines` stands at.
    void decode(std::string_view piece, std::wstring& text, const PiaBodyLines& lines,
                PiaReport& report) const;

private:
    PiaEncoding encoding_ = PiaEncoding::Utf8;
};

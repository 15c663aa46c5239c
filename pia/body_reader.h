/// Builds a tree from body text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include "pia/body_lines.h"
#include "pia/entry_taker.h"

class PiaBodyReader {
public:
    /// Borrows everything; `tree` must be fresh, and its values may lie in `body` afterwards.
    /// `isAscii` says whether the whole body is. `entries` may be null.
    PiaBodyReader(std::string_view body, bool isAscii, PiaEncoding encoding,
                  const PiaLimits& limits, PiaTree& tree, PiaReport& report,
                  PiaEntryTaker* entries);

    /// Reads the whole body. False at the first invalid line, which is noted in the report.
    bool read();

private:
    /// A line that began an item or a block, up to its "=" or "{".
    struct SeenLine {
        std::string_view beginning;
        PiaItemType type;
        PiaKey name;
    };

    /// A block that is being read, and what the block before it at the same depth looked like.
    /// Blocks of a list are alike: while one follows the lines of its sibling, its names are known
    /// to be valid and new without looking at them.
    struct Level {
        PiaBlock* block = nullptr;
        std::vector<SeenLine> sibling;
        std::vector<SeenLine> seen;
        /// The line of the sibling that is expected next.
        std::size_t next = 0;
        bool follows = false;
        bool records = false;
        /// True while the block has the items of its sibling, which only need their values.
        bool refills = false;
        /// True while the children are named 0, 1, 2, ...: then the next of these is new.
        bool counts = true;
    };

    // Plain lines: ASCII, no longer than one read, nothing odd in them. What these do not take,
    // invalid lines among it, is left to the careful functions below.
    bool takePlainLine();
    bool takeLikeSibling(Level& level);
    bool refillItems(Level& level);
    bool takeNamedLine(Level& level);
    /// What is known of the name of a line.
    enum class Known { Nothing, IsNew, FollowsSibling };
    bool takeItem(Level& level, const char* value, const SeenLine& line, Known known);
    bool takeOpening(Level& level, const SeenLine& line, Known known);
    bool append(Level& level, const SeenLine& line, PiaItem* item, Known known);
    static bool refill(PiaItem& item, PiaItemType type, std::string_view value, std::uint64_t line);
    PiaItem* makePlain(PiaKey name, PiaItemType type, std::string_view value);
    static void stopFollowing(Level& level);

    // Any line.
    template <class Char>
    bool readLine(std::basic_string_view<Char> line);
    template <class Char>
    bool readItem(std::basic_string_view<Char> line, std::size_t equals);
    template <class Char>
    bool readBin(PiaKey name, std::basic_string_view<Char> begin);
    template <class Char>
    bool openBlock(std::basic_string_view<Char> line, std::size_t brace);
    template <class Char>
    void closeBlock(std::basic_string_view<Char> line);
    /// The name in front of a "=" or "{": empty when it is invalid, which is noted.
    template <class Char>
    std::basic_string_view<Char> nameIn(std::basic_string_view<Char> text);
    /// Adds an item that began at `line`.
    bool add(PiaItem* item, std::uint64_t line);
    bool add(PiaItem* item) { return add(item, lines_.line()); }
    bool mayAddItem();

    Level& level() { return levels_[depth_]; }
    bool insideBlock() const { return depth_ > 0; }
    void enter(PiaBlock* block);
    void leave();
    /// True inside a block that is handed over with its items as soon as it is complete.
    bool insideEntry() const { return insideList_ && depth_ >= entryDepth; }
    void enterList(Level& entered);
    void handOver(PiaBlock& entry);

    bool next(std::string_view& piece) { return lines_.next(piece, report_); }
    /// The piece decoded, when it is not ASCII.
    const std::wstring& decoded(std::string_view piece);
    bool isPlain(std::string_view piece) const;
    void warnOfSplit();
    std::wstring pathOf(std::wstring_view name) const;
    PiaFinding here(PiaCode code) const;
    template <class Char>
    bool fail(PiaCode code, std::basic_string_view<Char> found, std::wstring expected = {});

    PiaBodyLines lines_;
    PiaLineDecoder decoder_;
    const bool asciiBody_;
    const PiaLimits limits_;
    PiaArena& arena_;
    PiaReport& report_;
    /// From the root to the block that is being read, and deeper ones that were left.
    std::vector<Level> levels_;
    std::size_t depth_ = 0;
    std::size_t itemCount_ = 0;

    static constexpr std::size_t entryDepth = 2;
    PiaEntryTaker* const entries_;
    bool insideList_ = false;
    /// The items of the entry that was handed over last, to be those of the next.
    PiaBlock::Items entryItems_;
    bool entryHoldsBlocks_ = false;

    std::wstring decodedLine_;
};

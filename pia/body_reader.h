/// Builds a tree from body text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pia.h"
#include "pia/body_lines.h"
#include "pia/name_table.h"

class PiaBodyReader {
public:
    /// Borrows everything; `tree` must be fresh.
    PiaBodyReader(std::string_view body, PiaEncoding encoding, const PiaLimits& limits,
                  PiaTree& tree, PiaReport& report);

    /// Reads the whole body. False at the first invalid line, which is noted in the report.
    bool read();

private:
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
    template <class Item, class... Args>
    bool add(PiaKey name, Args&&... args);
    bool mayAddItem();

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
    PiaNameTable names_;
    /// From the root to the block that is being read.
    std::vector<PiaBlock*> blocks_;
    std::size_t itemCount_ = 0;
    std::wstring decodedLine_;
};

/// What an open version-2 file holds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "pia/body_lines.h"

struct PiaFileIn::State {
    /// Checks the container and inflates the body: 0, -2 or zlib's error code.
    int open(std::string_view file, const PiaReadOptions& options);
    /// Finds the encoding of `bodyBytes` and goes to its first line.
    void startLines();

    ut::ByteBuffer bodyBytes;
    bool isAscii = false;
    PiaContainer container;
    PiaReport report;
    PiaBodyLines lines;
    PiaLineDecoder decoder;
    std::wstring currentLine;

private:
    bool verify(std::uint32_t bodyLength, std::uint32_t compressedLength, std::uint64_t streamRoom,
                const PiaReadOptions& options);
};

/// Reads a whole file within the limits; false with the reason in the report.
bool piaReadFile(const wchar_t* path, const PiaReadOptions& options, ut::ByteBuffer& file,
                 PiaReport& report);

/// Sound files around bodies, made in no time: fuzzers would spend most of it on packing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <platen/pia.h>

/// A zlib stream that holds `body` as it is.
std::string storedStream(std::string_view body);

/// A version-2 file whose stream is packed so.
std::string storedFile(std::string_view body, PiaKind kind = PiaKind::Ctb);

/// True for one input in `count`, always the same ones: what takes long is tried with those. For
/// all where inputs that are kept are replayed.
bool chosen(std::string_view input, std::uint64_t count);

extern bool isReplay;

/// What stands before and after the first line "----" of the input; all of it and nothing without.
struct InputParts {
    std::string_view first;
    std::string_view second;
};
inline constexpr std::string_view partsDivider = "\n----\n";
InputParts partsOf(std::string_view input);

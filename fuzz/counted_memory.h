/// What is allocated with `new`, counted: fuzzers hold reading to a multiple of its input, both in
/// bytes and in calls. All that was ever asked for counts, which is at least what is held at once.
#pragma once

#include <cstddef>

struct CountedMemory {
    std::size_t bytes = 0;
    std::size_t calls = 0;
};

/// Since the program began.
CountedMemory countedMemory();

/// Requires that what is allocated while it lives stays within `bytesPerByte` and `callsPerByte`
/// for each byte of an input, besides what reading an empty one may take.
class BoundedMemory {
public:
    BoundedMemory(std::size_t inputBytes, std::size_t bytesPerByte, double callsPerByte);
    BoundedMemory(const BoundedMemory&) = delete;
    BoundedMemory& operator=(const BoundedMemory&) = delete;
    ~BoundedMemory();

private:
    CountedMemory before_;
    std::size_t mostBytes_;
    std::size_t mostCalls_;
};

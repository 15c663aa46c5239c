/// What fuzzers do when something does not hold.
#pragma once

#include <cstdio>
#include <cstdlib>

/// (clang 14 has the built-in functions of `std::source_location`, but not the class.)
inline void require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "oracle failed: %s:%d\n", file, line);
        std::abort();
    }
}

#include "fuzz/counted_memory.h"

#include <cstdio>
#include <cstdlib>
#include <new>

#include "fuzz/oracle.h"

namespace {

// Fuzzers have one thread that counts.
thread_local CountedMemory counted;

void* counting(std::size_t size) {
    counted.bytes += size;
    ++counted.calls;
    return std::malloc(size == 0 ? 1 : size);
}

void* countingOrThrowing(std::size_t size) {
    void* const block = counting(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

/// Before the first use of anything: tables, buffers of the system, a codec.
constexpr std::size_t bytesOfEmpty = std::size_t{64} << 10U;
constexpr std::size_t callsOfEmpty = 256;

}  // namespace

// All forms but those with a larger alignment, which Windows frees in a way of its own: a sanitizer
// would see memory of one form freed by another.
void* operator new(std::size_t size) { return countingOrThrowing(size); }
void* operator new[](std::size_t size) { return countingOrThrowing(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return counting(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return counting(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

CountedMemory countedMemory() { return counted; }

BoundedMemory::BoundedMemory(std::size_t inputBytes, std::size_t bytesPerByte, double callsPerByte)
    : before_(counted),
      mostBytes_(bytesOfEmpty + inputBytes * bytesPerByte),
      mostCalls_(callsOfEmpty +
                 static_cast<std::size_t>(static_cast<double>(inputBytes) * callsPerByte)) {}

BoundedMemory::~BoundedMemory() {
    const std::size_t bytes = counted.bytes - before_.bytes;
    const std::size_t calls = counted.calls - before_.calls;
    if (bytes > mostBytes_ || calls > mostCalls_) {
        std::fprintf(stderr, "allocated %zu bytes in %zu calls, allowed are %zu in %zu\n", bytes,
                     calls, mostBytes_, mostCalls_);
        require(false);
    }
}

/// The most memory that reading takes at once. The program's own allocation functions count for
/// the library too, because it is linked statically, and for the C++ runtime, because Linux lets a
/// program replace what a shared library calls; Windows does not, so this is not built there.

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

#include "bench/sample.h"

namespace {

/// Counts only while asked to: otherwise allocating costs what it always does, and the other
/// measurements stay what they are.
struct Counter {
    bool counting = false;
    std::ptrdiff_t now = 0;
    std::ptrdiff_t most = 0;

    void* taken(void* memory) {
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
        if (counting) {
            now += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
            most = std::max(most, now);
        }
        return memory;
    }

    void release(void* memory) {
        if (counting && memory != nullptr) {
            now -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
        }
        std::free(memory);
    }
};

constinit Counter counter;

}  // namespace

void* operator new(std::size_t size) {
    return counter.taken(std::malloc(std::max(size, std::size_t{1})));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return counter.taken(
        std::aligned_alloc(static_cast<std::size_t>(alignment), std::max(size, std::size_t{1})));
}
void operator delete(void* memory) noexcept { counter.release(memory); }
void operator delete(void* memory, std::size_t) noexcept { counter.release(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { counter.release(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    counter.release(memory);
}

namespace {

void readMemory(benchmark::State& state, bench::Size size) {
    const bench::Sample& sample = bench::sample(size);
    for (auto _ : state) {
        counter = {.counting = true};
        const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::read(sample.name.c_str()));
        counter.counting = false;
        if (!table) {
            state.SkipWithError("the table cannot be read");
            break;
        }
    }
    bench::reportBody(state, size);
    state.counters["most_bytes"] = static_cast<double>(counter.most);
    state.counters["most_per_body_byte"] =
        static_cast<double>(counter.most) / static_cast<double>(sample.body.size());
}
// The figure is the same every time.
BENCHMARK_CAPTURE(readMemory, small, bench::Size::Small)
    ->Iterations(1)
    ->Repetitions(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(readMemory, large, bench::Size::Large)
    ->Iterations(1)
    ->Repetitions(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

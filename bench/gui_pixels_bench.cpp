/// Converting the pixels of a whole picture for each pair of formats, beside copying as many bytes
/// and beside a plain loop over pixels.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <platen/gui_images.h>

namespace {

using namespace wut::ImageUtils;

constexpr int width = 3840;
constexpr int height = 2160;
constexpr std::size_t pixels = std::size_t{width} * height;
constexpr unsigned char alpha = 200;
constexpr std::array<const char*, 4> names{"RGB", "RGBA", "BGR", "BGRA"};
constexpr std::array formats{PF_RGB, PF_RGBA, PF_BGR, PF_BGRA};

std::size_t bytesPerPixel(PixelFormat format) { return format % 2 == 1 ? 4 : 3; }

/// Both pictures of a measurement; every measurement works on the same memory.
struct Pictures {
    Pictures() : source(pixels * 4), target(pixels * 4) {
        for (std::size_t at = 0; at < source.size(); ++at) {
            source[at] = static_cast<unsigned char>(at * 7 + at / 251);
        }
    }

    std::vector<unsigned char> source;
    std::vector<unsigned char> target;
};

Pictures& pictures() {
    static Pictures both;
    return both;
}

void plainLoop(const unsigned char* source, PixelFormat from, unsigned char* target,
               PixelFormat to) {
    const std::size_t fromBytes = bytesPerPixel(from);
    const std::size_t toBytes = bytesPerPixel(to);
    const bool swap = (from > PF_RGBA) != (to > PF_RGBA);
    for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
        target[0] = source[swap ? 2 : 0];
        target[1] = source[1];
        target[2] = source[swap ? 0 : 2];
        if (toBytes == 4) {
            target[3] = fromBytes == 4 ? source[3] : alpha;
        }
        source += fromBytes;
        target += toBytes;
    }
}

template <class Work>
void measure(benchmark::State& state, std::size_t bytes, Work work) {
    Pictures& both = pictures();
    for (auto _ : state) {
        work(both.source.data(), both.target.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void addPair(PixelFormat from, PixelFormat to) {
    const std::string pair = std::string(names[from]) + "_" + names[to];
    const std::size_t larger = pixels * std::max(bytesPerPixel(from), bytesPerPixel(to));
    const auto add = [&](const char* what, auto work) {
        benchmark::RegisterBenchmark((std::string(what) + "/" + pair).c_str(),
                                     [=](benchmark::State& state) { measure(state, larger, work); })
            ->Unit(benchmark::kMillisecond);
    };
    add("copyPixels", [=](const unsigned char* source, unsigned char* target) {
        copyPixels(width, height, source, from, VD_TopDown, target, to, VD_TopDown, alpha, 0, 0);
    });
    add("copyPixelsTurned", [=](const unsigned char* source, unsigned char* target) {
        copyPixels(width, height, source, from, VD_TopDown, target, to, VD_BottomUp, alpha, 0, 0);
    });
    add("copySubimagePixels", [=](const unsigned char* source, unsigned char* target) {
        copySubimagePixels(width, height, source, from, VD_TopDown, width, height, target, to,
                           VD_TopDown, 0, 0, 0, 0, width, height, alpha, 0, 0);
    });
    add("plainLoop", [=](const unsigned char* source, unsigned char* target) {
        plainLoop(source, from, target, to);
    });
}

/// What a pair is measured against has as many bytes a pixel as the larger of its sides.
void addCopy(std::size_t bytes) {
    benchmark::RegisterBenchmark(
        ("memcpy/" + std::to_string(bytes) + "_bytes").c_str(),
        [=](benchmark::State& state) {
            const std::size_t size = pixels * bytes;
            measure(state, size, [=](const unsigned char* source, unsigned char* target) {
                std::memcpy(target, source, size);
            });
        })
        ->Unit(benchmark::kMillisecond);
}

const bool added = [] {
    addCopy(3);
    addCopy(4);
    for (const PixelFormat from : formats) {
        for (const PixelFormat to : formats) {
            addPair(from, to);
        }
    }
    return true;
}();

}  // namespace

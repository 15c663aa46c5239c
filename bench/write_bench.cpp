/// Writing a plot style table, beside what zlib needs for the same body.

#include <zlib.h>

#include <filesystem>
#include <string>
#include <string_view>

#include <platen/utcore.h>
#include "bench/sample.h"

namespace {

using bench::Sample;
using bench::Size;

/// Where a benchmark writes what `sample` holds already.
std::wstring destination(const Sample& sample) {
    std::filesystem::path path = sample.path;
    return path.replace_filename("written").replace_extension(sample.path.extension()).wstring();
}

// --- The whole ---

void writeTable(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    const std::wstring path = destination(sample);
    for (auto _ : state) {
        if (!sample.table->write(path.c_str())) {
            state.SkipWithError("the table cannot be written");
            break;
        }
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(writeTable);

// --- What it is measured against ---

void referenceDeflate(benchmark::State& state, Size size) {
    constexpr int level = 6;
    const Sample& sample = bench::sample(size);
    std::string target(compressBound(static_cast<uLong>(sample.body.size())), '\0');
    std::string source = sample.body;
    for (auto _ : state) {
        z_stream stream{};
        bool done = deflateInit(&stream, level) == Z_OK;
        stream.next_in = reinterpret_cast<Bytef*>(source.data());
        stream.avail_in = static_cast<uInt>(source.size());
        stream.next_out = reinterpret_cast<Bytef*>(target.data());
        stream.avail_out = static_cast<uInt>(target.size());
        done = done && deflate(&stream, Z_FINISH) == Z_STREAM_END;
        deflateEnd(&stream);
        if (!done) {
            state.SkipWithError("the body cannot be deflated");
            break;
        }
        benchmark::DoNotOptimize(target.data());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(referenceDeflate);

// --- The stages of the whole ---

void stageTreeOfTable(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        PiaTree tree;
        if (!sample.table->writeToBlock(tree.root())) {
            state.SkipWithError("the tree cannot be made");
            break;
        }
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageTreeOfTable);

void stageBodyText(benchmark::State& state, Size size) {
    PiaTree tree;
    if (!bench::sample(size).table->writeToBlock(tree.root())) {
        state.SkipWithError("the tree cannot be made");
        return;
    }
    for (auto _ : state) {
        std::string body;
        PiaReport report;
        if (!piaWriteBody(tree.root(), body, report)) {
            state.SkipWithError("the body cannot be written");
            break;
        }
        benchmark::DoNotOptimize(body.data());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageBodyText);

void stageReplaceFile(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    const std::wstring path = destination(sample);
    const std::string_view pieces[] = {sample.file.view()};
    for (auto _ : state) {
        if (ut::replaceFile(path, pieces)) {
            state.SkipWithError("the file cannot be written");
            break;
        }
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageReplaceFile);

}  // namespace

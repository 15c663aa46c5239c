/// Reading a plot style table, beside what zlib and a JSON parser need for the same content.

#include <rapidjson/document.h>

#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

#include <platen/utcore.h>
#include "bench/bare_inflate.h"
#include "bench/sample.h"

namespace {

using bench::BareInflate;
using bench::Sample;
using bench::Size;

BareInflate inflateOf(const Sample& sample) { return {sample.stream(), sample.body.size()}; }

/// The tree of the table as JSON without white space.
std::string compactJson(const Sample& sample) {
    PiaTree tree;
    PiaReport report;
    std::string text;
    if (!sample.table->writeToBlock(tree.root()) || !piaWriteJson(tree.root(), text, report)) {
        throw std::runtime_error("the tree of a table cannot be written as JSON");
    }
    return nlohmann::json::parse(text).dump();
}

// --- The whole ---

void readTable(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::read(sample.name.c_str()));
        if (!table) {
            state.SkipWithError("the table cannot be read");
            break;
        }
        benchmark::DoNotOptimize(table->size());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(readTable);

// --- What it is measured against ---

void referenceInflate(benchmark::State& state, Size size) {
    BareInflate inflate = inflateOf(bench::sample(size));
    for (auto _ : state) {
        if (!inflate.run()) {
            state.SkipWithError("the stream cannot be inflated");
            break;
        }
        benchmark::DoNotOptimize(inflate.data());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(referenceInflate);

void referenceInflateAndJson(benchmark::State& state, Size size) {
    BareInflate inflate = inflateOf(bench::sample(size));
    const std::string json = compactJson(bench::sample(size));
    for (auto _ : state) {
        rapidjson::Document document;
        if (!inflate.run() || document.Parse(json.c_str()).HasParseError()) {
            state.SkipWithError("the stream cannot be inflated or the JSON text not be parsed");
            break;
        }
        benchmark::DoNotOptimize(inflate.data());
        benchmark::DoNotOptimize(document.MemberCount());
    }
    bench::reportBody(state, size);
    state.counters["json_bytes"] = static_cast<double>(json.size());
}
PLATEN_BENCH(referenceInflateAndJson);

void referenceFile(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    std::string bytes(sample.file.size(), '\0');
    for (auto _ : state) {
        std::ifstream file(sample.path, std::ios::binary);
        if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
            state.SkipWithError("the file cannot be read");
            break;
        }
        benchmark::DoNotOptimize(bytes.data());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(referenceFile);

// --- The stages of the whole; each but the one that is named runs outside the time ---

void stageFile(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        ut::ByteBuffer bytes;
        bool tooLarge = false;
        if (ut::readFile(sample.name, sample.file.size(), bytes, tooLarge)) {
            state.SkipWithError("the file cannot be read");
            break;
        }
        benchmark::DoNotOptimize(bytes.data());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageFile);

void stageTree(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        PiaInput input;
        if (!input.openBytes(sample.file.view())) {
            state.SkipWithError("the tree cannot be read");
            break;
        }
        state.PauseTiming();
        input = PiaInput();
        state.ResumeTiming();
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageTree);

void stageTable(benchmark::State& state, Size size) {
    PiaInput input;
    if (!input.openBytes(bench::sample(size).file.view())) {
        state.SkipWithError("the tree cannot be read");
        return;
    }
    for (auto _ : state) {
        CPlotStyleTable table;
        if (!table.init(input)) {
            state.SkipWithError("the table cannot be taken from the tree");
            break;
        }
        state.PauseTiming();
        table = CPlotStyleTable();
        state.ResumeTiming();
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageTable);

void stageDestroyTree(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<PiaInput> input(std::in_place);
        const bool open = input->openBytes(sample.file.view());
        state.ResumeTiming();
        if (!open) {
            state.SkipWithError("the tree cannot be read");
            break;
        }
        input.reset();
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageDestroyTree);

void stageDestroyTable(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<CPlotStyleTable>(*sample.table);
        state.ResumeTiming();
        table.reset();
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(stageDestroyTable);

}  // namespace

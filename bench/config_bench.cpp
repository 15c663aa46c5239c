/// Reading a plot configuration with the custom papers of its PMP, beside what the system and zlib
/// need for the two files.

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <platen/plotcfg.h>
#include "bench/bare_inflate.h"
#include "bench/configuration.h"
#include "pia/container.h"

namespace {

using bench::BareInflate;

/// One file as the reference reads it.
struct File {
    explicit File(std::filesystem::path file) : path(std::move(file)) {
        PiaInput input;
        if (!input.open(path.wstring().c_str())) {
            throw std::runtime_error("a file of a configuration cannot be read");
        }
        bodySize = input.body().size();
        bytes.resize(std::filesystem::file_size(path));
    }

    bool read() {
        std::ifstream file(path, std::ios::binary);
        return !!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string_view stream() const { return std::string_view(bytes).substr(pia_header::size); }

    std::filesystem::path path;
    std::string bytes;
    std::size_t bodySize = 0;
};

void readConfig(benchmark::State& state, int count) {
    const std::wstring name = bench::configuration(count).name();
    for (auto _ : state) {
        bool printerChanged = false;
        const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::read(name.c_str(), printerChanged));
        if (!config || config->pmp() == nullptr || !config->pmp()->udm.media) {
            state.SkipWithError("the configuration or its PMP cannot be read");
            break;
        }
        benchmark::DoNotOptimize(config->pmp()->udm.media->size.papers.size());
    }
    state.counters["papers"] = count;
}

void referenceOpenAndInflate(benchmark::State& state, int count) {
    File config(bench::configuration(count).configPath());
    File pmp(bench::configuration(count).pmpPath());
    BareInflate configInflate(config.stream(), config.bodySize);
    BareInflate pmpInflate(pmp.stream(), pmp.bodySize);
    for (auto _ : state) {
        if (!config.read() || !pmp.read() || !configInflate.run() || !pmpInflate.run()) {
            state.SkipWithError("a file cannot be read or inflated");
            break;
        }
        benchmark::DoNotOptimize(configInflate.data());
        benchmark::DoNotOptimize(pmpInflate.data());
    }
    state.counters["body_bytes"] = static_cast<double>(config.bodySize + pmp.bodySize);
}

#define PLATEN_CONFIG_BENCH(function)                                            \
    BENCHMARK_CAPTURE(function, papers_100, 100)->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(function, papers_500, 500)->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(function, papers_10000, 10000)->Unit(benchmark::kMillisecond)
PLATEN_CONFIG_BENCH(readConfig);
PLATEN_CONFIG_BENCH(referenceOpenAndInflate);

}  // namespace

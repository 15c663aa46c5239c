/// The plot style tables that everything here is measured with.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include <platen/pia.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "pia/container.h"

namespace bench {

/// The folder of the files that are read and written; it goes with the program.
class Folder {
public:
    Folder() {
        // Files that live in memory keep the disk out of the times.
        const std::filesystem::path memory = "/dev/shm";
        std::error_code none;
        const bool inMemory = std::filesystem::is_directory(memory, none);
        path_ = (inMemory ? memory : std::filesystem::temp_directory_path()) /
                ("platen_bench-" + std::to_string(std::random_device()()));
        std::filesystem::create_directory(path_);
        benchmark::AddCustomContext("files_in",
                                    inMemory ? "memory (/dev/shm)" : "temporary folder");
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// Made before the first measurement, because the program begins by printing where files are.
inline const Folder folder;

/// A colour-dependent table, and a named one whose body is about a hundred times as large.
enum class Size { Small, Large };

/// Gives a style settings as people choose them: mostly few line weights, here and there a colour,
/// a screening, a line type or a description of its own.
inline void choosePen(CPlotStyle& style, std::int32_t number) {
    constexpr std::array<std::int32_t, 6> lineWeights{0, 5, 8, 10, 13, 19};
    style.setLineWeight(lineWeights[static_cast<std::size_t>(number) % lineWeights.size()]);
    if (number % 4 == 0) {
        constexpr std::int32_t red = 7;
        constexpr std::int32_t green = 31;
        constexpr std::int32_t blue = 57;
        style.updateColor(number * red % 256 | number * green % 256 << 8 |
                          number * blue % 256 << 16);
    }
    if (number % 10 == 0) {
        style.setScreen(number % 100);
    }
    if (number % 16 == 0) {
        style.setLineType(number % 31);
        style.setAdaptiveLinetype(false);
    }
    if (number % 25 == 0) {
        style.setDesc(L"Walls and openings, sheet " + std::to_wstring(number));
        style.setGrayScale(true);
    }
}

inline void fillSmall(PiaBlock& root) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(true, L"Office plots"));
    for (std::size_t index = 0; index < table->size(); ++index) {
        choosePen(*table->style(index), static_cast<std::int32_t>(index));
    }
    if (!table->writeToBlock(root)) {
        throw std::runtime_error("the small table cannot be written");
    }
}

inline void fillLarge(PiaBlock& root) {
    constexpr std::int32_t count = 25500;
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, L"Office plots"));
    bool done = table->writeToBlock(root);
    // The table's own way of adding asks every style whether the name is free.
    auto* styles =
        done ? static_cast<PiaBlock*>(root.findItem(L"plot_style", PiaItemType::Block)) : nullptr;
    for (auto index = static_cast<std::int32_t>(table->size()); done && index < count; ++index) {
        CPlotStyle style;
        style.updateName((L"Style " + std::to_wstring(index)).c_str());
        choosePen(style, index);
        done = style.write(*styles, index, true);
    }
    if (!done) {
        throw std::runtime_error("the large table cannot be written");
    }
}

/// One table in all the forms that are measured.
struct Sample {
    explicit Sample(Size size)
        : path(folder / (size == Size::Small ? "small.ctb" : "large.stb")), name(path.wstring()) {
        PiaTree tree;
        PiaFileOut out;
        if (size == Size::Small) {
            fillSmall(tree.root());
            out.setKind(PiaKind::Ctb);
        } else {
            fillLarge(tree.root());
            out.setKind(PiaKind::Stb);
        }
        PiaInput input;
        if (!out.encode(tree.root(), file) || !input.openBytes(file.view()) ||
            !out.write(&tree.root(), name.c_str())) {
            throw std::runtime_error("the file of a table cannot be made");
        }
        body = input.body();
        table.reset(CPlotStyleTable::read(name.c_str()));
        if (!table) {
            throw std::runtime_error("the file of a table cannot be read");
        }
    }

    /// The zlib stream in the file.
    std::string_view stream() const { return file.view().substr(pia_header::size); }

    std::filesystem::path path;
    std::wstring name;
    ut::ByteBuffer file;
    std::string body;
    std::unique_ptr<CPlotStyleTable> table;
};

inline const Sample& sample(Size size) {
    if (size == Size::Small) {
        static const Sample small(Size::Small);
        return small;
    }
    static const Sample large(Size::Large);
    return large;
}

/// Says how much was measured: every figure is to be seen against the length of the body.
inline void reportBody(benchmark::State& state, Size size) {
    const std::size_t bytes = sample(size).body.size();
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    state.counters["body_bytes"] = static_cast<double>(bytes);
}

}  // namespace bench

/// Registers a measurement for both tables.
#define PLATEN_BENCH(function)                                                             \
    BENCHMARK_CAPTURE(function, small, bench::Size::Small)->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(function, large, bench::Size::Large)->Unit(benchmark::kMillisecond)

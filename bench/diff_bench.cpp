/// Comparing two files, beside the library's read of one.

#include <platen/compare.h>
#include <platen/edit.h>
#include "bench/sample.h"

namespace {

using bench::Sample;
using bench::Size;

/// The file of the sample in which every tenth style has another screening.
std::wstring changedFile(const Sample& sample, Size size) {
    const std::wstring name =
        (bench::folder / (size == Size::Small ? "changed.ctb" : "changed.stb")).wstring();
    platen::SourceFile file;
    if (!file.read(sample.name)) {
        throw std::runtime_error("the table cannot be read");
    }
    const PiaItem* styles = file.input().root()->findItem(L"plot_style", PiaItemType::Block);
    std::size_t number = 0;
    for (const PiaItem* style : static_cast<const PiaBlock*>(styles)->items) {
        PiaItem* screen =
            static_cast<const PiaBlock*>(style)->findItem(L"screen", PiaItemType::Num);
        if (number++ % 10 == 0) {
            static_cast<PiaNum*>(screen)->value = L"55";
        }
    }
    if (!file.write(name)) {
        throw std::runtime_error("the changed table cannot be written");
    }
    return name;
}

void diffTables(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    const std::wstring changed = changedFile(sample, size);
    for (auto _ : state) {
        platen::SourceFile before;
        platen::SourceFile after;
        if (!before.read(sample.name) || !after.read(changed)) {
            state.SkipWithError("a table cannot be read");
            break;
        }
        const platen::Comparison comparison = platen::compare(before.input(), after.input());
        if (comparison.differences.size() < 20) {
            state.SkipWithError("the differences are not found");
            break;
        }
        benchmark::DoNotOptimize(platen::describe(comparison));
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(diffTables);

}  // namespace

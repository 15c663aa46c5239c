/// Checking a file, beside the library's read of it.

#include <platen/inspect.h>
#include "bench/sample.h"

namespace {

using bench::Sample;
using bench::Size;

void checkTable(benchmark::State& state, Size size) {
    const Sample& sample = bench::sample(size);
    for (auto _ : state) {
        const platen::CheckResult result = platen::check(sample.name);
        if (result.verdict != platen::Verdict::Sound) {
            state.SkipWithError("the table is not sound");
            break;
        }
        benchmark::DoNotOptimize(result.findings.size());
    }
    bench::reportBody(state, size);
}
PLATEN_BENCH(checkTable);

}  // namespace

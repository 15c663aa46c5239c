/// Does one thing with whole files as often as asked and says how long each time took.
/// `platen_whole read|write|check|config COUNT`

#include <algorithm>
#include <array>
#include <ctime>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include <platen/inspect.h>
#include "bench/configuration.h"

namespace {

bool readTable() {
    const bench::Sample& sample = bench::sample(bench::Size::Small);
    return std::unique_ptr<CPlotStyleTable>(CPlotStyleTable::read(sample.name.c_str())) != nullptr;
}

bool writeTable() {
    const bench::Sample& sample = bench::sample(bench::Size::Small);
    static const std::wstring path = (bench::folder / "written.ctb").wstring();
    return sample.table->write(path.c_str());
}

bool checkTable() {
    const bench::Sample& sample = bench::sample(bench::Size::Small);
    return platen::check(sample.name).verdict != platen::Verdict::Errors;
}

bool readConfiguration() {
    static const std::wstring name = bench::configuration(500).name();
    bool printerChanged = false;
    const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::read(name.c_str(), printerChanged));
    return config && config->pmp() != nullptr;
}

struct Task {
    std::string_view name;
    bool (*run)();
};
constexpr std::array<Task, 4> tasks{{
    {"read", readTable},
    {"write", writeTable},
    {"check", checkTable},
    {"config", readConfiguration},
}};

/// Processor time of this program.
double microseconds() {
    return static_cast<double>(std::clock()) * 1e6 / static_cast<double>(CLOCKS_PER_SEC);
}

}  // namespace

int main(int argc, char** argv) {
    const auto* task = std::find_if(tasks.begin(), tasks.end(), [&](const Task& candidate) {
        return argc == 3 && candidate.name == argv[1];
    });
    const int count = task == tasks.end() ? 0 : std::stoi(argv[2]);
    // The first time makes the files and fills caches.
    if (count < 1 || !task->run()) {
        std::cerr << "platen_whole read|write|check|config COUNT\n";
        return 1;
    }
    const double start = microseconds();
    for (int round = 0; round < count; ++round) {
        if (!task->run()) {
            return 1;
        }
    }
    std::cout << (microseconds() - start) / count << '\n';
    return 0;
}
